#pragma once

#include <cstddef>
#include <set>
#include <string>

#include "suite/report/report.h"
#include "syshealth/result/brivel_result.h"

namespace exporting {

/// Result codes of the suite that this application gives by itself.
inline constexpr int kGenericFailure = 1;
inline constexpr int kInvalidParameter = 5;
inline constexpr int kWriteFileFailed = 11;

/// Counts how reading went, for the result of the run.
class Outcome {
 public:
  void add(const report::ServerReport& report);

  /// Success if everything was read of every target. Else the code that all
  /// failures have in common, or that of a generic failure, and a message that
  /// says how many targets were not read, or what of the only one. The host
  /// knows why a single target could not be read at all.
  BrivelResult result() const;

 private:
  std::size_t reports_ = 0;
  std::size_t failed_ = 0;
  std::size_t partial_ = 0;
  std::set<int> codes_;
  std::string first_;  ///< The first failure, for a person.
};

}  // namespace exporting
