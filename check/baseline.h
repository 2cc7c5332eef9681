#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "check/comparison.h"
#include "check/verdict.h"
#include "suite/base/result.h"
#include "suite/report/report.h"

namespace check {

/// Earlier reports, by target and node: what servers are compared with.
class Baseline {
 public:
  /// Reads the text of a baseline file: one report a line, as JSON
  /// (suite/report/json.h), each the complete reading of another node. The
  /// cause of a failure names the line and what is wrong with it.
  static base::Result<Baseline> parse(std::string_view text);

  /// Adds to a verdict what the server of a report lacks. A server without a
  /// baseline is a gap.
  void judge(const report::ServerReport& report, Verdict& verdict) const;

  /// Adds an error for each node that a service had and has no more. Of
  /// services that no verdict is about, or that could not be read, nothing is
  /// said here.
  void addMissingNodes(std::vector<Verdict>& verdicts) const;

 private:
  std::map<std::pair<std::string, int>, report::ServerReport> reports_;
};

/// Why a report cannot serve as a baseline; empty if it can.
std::string unfitForBaseline(const report::ServerReport& report);

/// "rack1-n3", of a service with several nodes "rack1-n3, node 2".
std::string nameOf(const report::Target& target);

}  // namespace check
