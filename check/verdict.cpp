#include "check/verdict.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "suite/report/words.h"

namespace check {
namespace {

using report::Health;

Finding findingOf(const report::Event& event) {
  Finding finding;
  // Nothing but a warning is taken for less than an error.
  finding.status =
      event.severity == Health::kWarning ? Status::kWarning : Status::kCritical;
  finding.category = event.category;
  finding.messageId = event.messageId;
  finding.origin = event.origin;
  finding.text = !event.message.empty()     ? event.message
                 : !event.messageId.empty() ? event.messageId
                                            : "an event without a text";
  return finding;
}

// Whether an event says why an area has this health.
bool isExplained(const std::vector<report::Event>& events,
                 report::Category category, Health health) {
  return std::any_of(
      events.begin(), events.end(), [&](const report::Event& event) {
        return event.category == category && event.severity >= health;
      });
}

void judgeCategories(const report::HealthSummary& health, Verdict& verdict) {
  bool unknown = false;
  bool normal = true;
  for (std::size_t i = 0; i < report::kCategories; ++i) {
    const auto category = static_cast<report::Category>(i);
    const Health value = health.categories[i];
    if (value == Health::kUnknown) {
      unknown = true;
      verdict.gaps.emplace_back(
          "the health of " + std::string(nameOf(category)) + " is not known");
    } else if (value != Health::kNormal) {
      normal = false;
      if (!isExplained(*health.events, category, value)) {
        Finding finding;
        finding.status =
            value == Health::kWarning ? Status::kWarning : Status::kCritical;
        finding.category = category;
        finding.text = "health is " + std::string(wordFor(value)) +
                       ", and no active event says why";
        verdict.findings.push_back(std::move(finding));
      }
    }
  }
  if (health.status == Health::kUnknown && !unknown) {
    verdict.gaps.emplace_back("the health is not known");
  }
  if (health.status > Health::kNormal && normal && verdict.findings.empty()) {
    Finding finding;
    finding.status = health.status == Health::kWarning ? Status::kWarning
                                                       : Status::kCritical;
    finding.text = "health is " + std::string(wordFor(health.status)) +
                   ", and no active event says why";
    verdict.findings.push_back(std::move(finding));
  }
}

}  // namespace

int countOf(const Verdict& verdict, Status status) {
  return verdict.dropped[static_cast<std::size_t>(status)] +
         static_cast<int>(std::count_if(
             verdict.findings.begin(), verdict.findings.end(),
             [&](const Finding& finding) {
               return !finding.ignored && finding.status == status;
             }));
}

int countIgnored(const Verdict& verdict) {
  return verdict.droppedIgnored +
         static_cast<int>(std::count_if(
             verdict.findings.begin(), verdict.findings.end(),
             [](const Finding& finding) { return finding.ignored; }));
}

bool isWhole(const Verdict& verdict) {
  return verdict.gaps.empty() && verdict.eventsRead;
}

Status statusOf(const Verdict& verdict) {
  if (countOf(verdict, Status::kCritical) > 0) {
    return Status::kCritical;
  }
  if (!isWhole(verdict)) {
    return Status::kUnknown;
  }
  return countOf(verdict, Status::kWarning) > 0 ? Status::kWarning
                                                : Status::kOk;
}

Verdict judge(const report::ServerReport& report) {
  Verdict verdict;
  verdict.target = report.target;
  verdict.seconds = report.read.seconds;
  verdict.fans = report.fans.value_or(std::vector<report::Fan>());
  for (const report::ReadFailure& failure : report.read.failures) {
    verdict.gaps.push_back(
        (failure.what.empty() ? "" : failure.what + ": ") +
        (failure.cause.empty() ? "could not be read" : failure.cause));
  }
  if (report.read.status != report::ReadStatus::kComplete &&
      verdict.gaps.empty()) {
    verdict.gaps.emplace_back("the reading is not complete");
  }
  if (report.health.events) {
    verdict.eventsRead = true;
    for (const report::Event& event : *report.health.events) {
      verdict.findings.push_back(findingOf(event));
    }
    judgeCategories(report.health, verdict);
  } else if (verdict.gaps.empty()) {
    verdict.gaps.emplace_back("the active events were not read");
  }
  return verdict;
}

void ignore(const IgnoreList& list, Verdict& verdict) {
  for (Finding& finding : verdict.findings) {
    finding.ignored = list.covers(finding);
  }
}

void shorten(Verdict& verdict) {
  std::map<std::pair<bool, Status>, std::size_t> kept;
  const auto isBeyond = [&](const Finding& finding) {
    if (++kept[{finding.ignored, finding.status}] <= kMostFindings) {
      return false;
    }
    ++(finding.ignored
           ? verdict.droppedIgnored
           : verdict.dropped[static_cast<std::size_t>(finding.status)]);
    return true;
  };
  std::vector<Finding> findings;
  for (Finding& finding : verdict.findings) {
    if (!isBeyond(finding)) {
      findings.push_back(std::move(finding));
    }
  }
  verdict.findings = std::move(findings);
  if (verdict.fans.size() > kMostFans) {
    verdict.fans.resize(kMostFans);
    verdict.fans.shrink_to_fit();
  }
}

void addMissingNodes(std::vector<Verdict>& verdicts) {
  std::map<std::string, std::set<int>> read;
  for (const Verdict& verdict : verdicts) {
    read[verdict.target.name].insert(verdict.target.node);
  }
  for (Verdict& verdict : verdicts) {
    std::set<int>& nodes = read[verdict.target.name];
    for (int node = 1; node <= verdict.target.nodes; ++node) {
      if (nodes.insert(node).second) {
        verdict.gaps.emplace_back("node " + std::to_string(node) + " of " +
                                  std::to_string(verdict.target.nodes) +
                                  " was not read");
      }
    }
  }
}

}  // namespace check
