#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "check/finding.h"
#include "check/ignore_list.h"
#include "check/status.h"
#include "suite/report/report.h"

namespace check {

/// How many findings of a kind, and how many fans, are kept of a node. No
/// output tells of more.
inline constexpr std::size_t kMostFindings = 100;
inline constexpr std::size_t kMostFans = 64;

/// What is to be said of one node of one target.
struct Verdict {
  report::Target target;
  std::vector<Finding> findings;
  /// Further findings, which are not kept: those that count, by `Status`, and
  /// those that do not.
  std::array<int, 4> dropped{};
  int droppedIgnored = 0;
  std::vector<std::string> gaps;  ///< Why the reading is not whole.
  bool eventsRead = false;
  double seconds = 0;  ///< How long the reading took.
  std::vector<report::Fan> fans;
};

/// How many findings of a status count, dropped ones included.
int countOf(const Verdict& verdict, Status status);

/// Whether all that counts could be read.
bool isWhole(const Verdict& verdict);

/// The status of a node: that of its worst finding that counts; without an
/// error, and with gaps, kUnknown. kOk only of a node that was wholly read.
Status statusOf(const Verdict& verdict);

/// Judges a report: its events, areas whose health no event explains, and
/// everything that it does not tell.
Verdict judge(const report::ServerReport& report);

/// How many findings do not count, dropped ones included.
int countIgnored(const Verdict& verdict);

/// Marks the findings that do not count.
void ignore(const IgnoreList& list, Verdict& verdict);

/// Drops, and counts, what is more than `kMostFindings` of one status that
/// count, or that do not; and the fans beyond `kMostFans`.
void shorten(Verdict& verdict);

/// Adds a gap for each node that a service has and that no verdict is about.
void addMissingNodes(std::vector<Verdict>& verdicts);

}  // namespace check
