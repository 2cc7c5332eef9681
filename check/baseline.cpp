#include "check/baseline.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "check/parts.h"
#include "suite/report/json.h"

namespace check {
namespace {

base::Failure bad(std::string cause) {
  base::Failure failure;
  failure.kind = base::FailureKind::kBadContent;
  failure.cause = std::move(cause);
  return failure;
}

}  // namespace

base::Result<Baseline> Baseline::parse(std::string_view text) {
  Baseline baseline;
  const auto refuse = [](int number, const std::string& why) {
    return bad("line " + std::to_string(number) + ": " + why);
  };
  for (int number = 1; !text.empty(); ++number) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.find_first_not_of(" \t\r") == std::string_view::npos) {
      continue;
    }
    auto report = report::fromJson(line);
    if (!report) {
      return refuse(number, report.error().cause);
    }
    const std::string why = unfitForBaseline(*report);
    if (!why.empty()) {
      return refuse(number, why);
    }
    const report::Target target = report->target;
    if (!baseline.reports_
             .insert({{target.name, target.node}, *std::move(report)})
             .second) {
      return refuse(number, nameOf(target) + " stands in it twice");
    }
  }
  if (baseline.reports_.empty()) {
    return bad("it is empty");
  }
  return baseline;
}

void Baseline::judge(const report::ServerReport& report,
                     Verdict& verdict) const {
  const auto before = reports_.find({report.target.name, report.target.node});
  if (before == reports_.end()) {
    verdict.gaps.push_back("the baseline has no " + nameOf(report.target));
    return;
  }
  if (report.read.status == report::ReadStatus::kFailed) {
    return;  // Nothing to compare, and the verdict says why.
  }
  Comparison comparison = compare(before->second, report);
  std::move(comparison.findings.begin(), comparison.findings.end(),
            std::back_inserter(verdict.findings));
  std::move(comparison.gaps.begin(), comparison.gaps.end(),
            std::back_inserter(verdict.gaps));
}

void Baseline::addMissingNodes(std::vector<Verdict>& verdicts) const {
  std::map<std::string, Verdict*> services;
  std::set<std::pair<std::string, int>> nodes;
  for (Verdict& verdict : verdicts) {
    if (verdict.eventsRead) {
      services.insert({verdict.target.name, &verdict});
    }
    nodes.insert({verdict.target.name, verdict.target.node});
  }
  for (const auto& [key, before] : reports_) {
    const auto service = services.find(key.first);
    if (service == services.end() || nodes.count(key) != 0) {
      continue;
    }
    Finding finding;
    finding.messageId = "Baseline.Missing";
    finding.text = "node " + std::to_string(key.second) + " is missing";
    service->second->findings.push_back(std::move(finding));
  }
}

std::string unfitForBaseline(const report::ServerReport& report) {
  if (report.read.status != report::ReadStatus::kComplete) {
    return "the reading of " + nameOf(report.target) +
           " is not complete, so nothing can be compared with it";
  }
  const std::vector<PartList> lists = partsOf(report);
  const bool any =
      std::any_of(lists.begin(), lists.end(),
                  [](const PartList& list) { return list.parts.has_value(); });
  return any ? ""
             : "the reading of " + nameOf(report.target) +
                   " has no parts to compare with";
}

std::string nameOf(const report::Target& target) {
  return target.nodes > 1
             ? target.name + ", node " + std::to_string(target.node)
             : target.name;
}

}  // namespace check
