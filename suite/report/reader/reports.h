#pragma once

#include <cstdint>
#include <memory>

#include "suite/report/report.h"
#include "syshealth/host/export.h"

namespace report {

/// Reads the targets of the run: those that the command line names, else this
/// machine. To be made once in a run, within `AppMain`, by an application that
/// has not asked `ConnectInfo` for targets.
///
///     report::Reports reports(report::kWantHealth);
///     report::ServerReport server;
///     while (reports.next(server)) { ... }
class BRIVEL_SUITE_API Reports {
 public:
  /// `wants`: the `Want` values of what is to be read. Contacts nobody yet.
  explicit Reports(std::uint32_t wants);
  ~Reports();  ///< Ends readings that are under way.

  Reports(const Reports&) = delete;
  Reports& operator=(const Reports&) = delete;

  /// Waits for the next report and moves it into `report`: one for each node,
  /// in the order of completion. A target that cannot be read has a report,
  /// too: its `read` says why. Returns false, and leaves `report` alone, when
  /// all targets are done.
  ///
  /// Throws a `base::Failure`, which an application lets pass, if the user has
  /// interrupted the run or has named a node that does not exist.
  bool next(ServerReport& report);

 private:
  class Reading;
  std::unique_ptr<Reading> reading_;
};

}  // namespace report
