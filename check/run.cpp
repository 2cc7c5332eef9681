#include "check/run.h"

#include <algorithm>
#include <cstdint>
#include <iostream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "check/baseline.h"
#include "check/baseline_file.h"
#include "check/ignore_list.h"
#include "check/options.h"
#include "check/plugin_output.h"
#include "check/verdict.h"
#include "export/output_file.h"
#include "suite/report/json.h"
#include "suite/report/reader/reports.h"

namespace check {
namespace {

// The lines of a baseline, as long as every report is fit for one.
class NewBaseline {
 public:
  void add(const report::ServerReport& report) {
    if (why_.empty()) {
      why_ = unfitForBaseline(report);
      lines_ += report::toJson(report) + "\n";
    }
  }

  // Writes them, if everything was read. Why not, otherwise; empty if done.
  std::string save(const std::string& path,
                   const std::vector<Verdict>& verdicts) const {
    const bool whole = !verdicts.empty() &&
                       std::all_of(verdicts.begin(), verdicts.end(), isWhole);
    if (!why_.empty() || !whole) {
      return "--save-baseline: nothing is saved" +
             (why_.empty() ? ", because not everything was read" : ": " + why_);
    }
    exporting::OutputFile file;
    std::string error;
    if (!file.open(path, error)) {
      return "--save-baseline: " + error;
    }
    file.stream() << lines_;
    return file.commit(error) ? "" : "--save-baseline: " + error;
  }

 private:
  std::string why_;  // The first report that is not fit, and why.
  std::string lines_;
};

BrivelResult finish(Status status, const std::string& output) {
  std::cout << output << std::flush;
  BrivelResult result;
  result.code = static_cast<std::int32_t>(status);
  return result;
}

// Judges all targets; a report is kept no longer than that takes.
std::vector<Verdict> judgeAll(const Options& options, const Baseline* baseline,
                              NewBaseline& saved) {
  const bool parts = baseline != nullptr || !options.saveBaseline.empty();
  report::Reports reports(parts ? report::kWantAll
                                : report::kWantHealth | report::kWantFans);
  const IgnoreList ignored(options.ignore);
  std::vector<Verdict> verdicts;
  report::ServerReport report;
  while (reports.next(report)) {
    verdicts.push_back(judge(report));
    if (baseline != nullptr) {
      baseline->judge(report, verdicts.back());
    }
    if (!options.saveBaseline.empty()) {
      saved.add(report);
    }
    // Of a thousand servers, no more is kept than can be told.
    ignore(ignored, verdicts.back());
    shorten(verdicts.back());
  }
  if (!options.oneNode) {
    addMissingNodes(verdicts);
    if (baseline != nullptr) {
      baseline->addMissingNodes(verdicts);
    }
  }
  for (Verdict& verdict : verdicts) {
    ignore(ignored, verdict);
  }
  return verdicts;
}

}  // namespace

BrivelResult run() {
  const Options options = readOptions();
  if (!options.baseline.empty() && !options.saveBaseline.empty()) {
    return finish(Status::kUnknown,
                  unknownLine("--baseline and --save-baseline exclude each "
                              "other"));
  }
  std::optional<Baseline> baseline;
  if (!options.baseline.empty()) {
    auto loaded = loadBaseline(options.baseline);
    if (!loaded) {
      return finish(Status::kUnknown, unknownLine(loaded.error().cause));
    }
    baseline = *std::move(loaded);
  }
  NewBaseline saved;
  std::vector<Verdict> verdicts =
      judgeAll(options, baseline ? &*baseline : nullptr, saved);
  std::string last;
  if (!options.saveBaseline.empty() && !verdicts.empty()) {
    std::string why = saved.save(options.saveBaseline, verdicts);
    if (why.empty()) {
      last = "The baseline is saved.\n";
    } else {
      verdicts.front().gaps.push_back(std::move(why));
    }
  }
  const Status status = statusOf(verdicts);
  return finish(status, pluginOutput(std::move(verdicts)) + last);
}

}  // namespace check
