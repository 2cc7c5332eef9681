// Reports in all forms that other programs read, and what the plug-in says of
// them. An input is a line of JSON as `export` writes it; what is none becomes
// the texts of a report, line by line.
#include <algorithm>
#include <boost/json/parse.hpp>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "check/baseline.h"
#include "check/ignore_list.h"
#include "check/plugin_output.h"
#include "check/verdict.h"
#include "export/csv.h"
#include "export/prometheus_text.h"
#include "fuzz/budget.h"
#include "fuzz/require.h"
#include "suite/base/text.h"
#include "suite/report/fields.h"
#include "suite/report/json.h"
#include "suite/report/report.h"

namespace {

// Takes the lines of a text one by one, as reports have their texts.
class Lines {
 public:
  explicit Lines(std::string_view text) : rest_(text) {}

  std::string next() {
    constexpr std::size_t kLongest = 1024;
    const std::string_view line = rest_.substr(0, rest_.find('\n'));
    rest_.remove_prefix(std::min(line.size() + 1, rest_.size()));
    return base::excerpt(line, kLongest);
  }

 private:
  std::string_view rest_;
};

template <typename Structure>
void fill(Structure& structure, Lines& lines) {
  report::forEachField(structure, [&lines](std::string_view, auto& value) {
    using Value = std::decay_t<decltype(value)>;
    if constexpr (std::is_same_v<Value, std::string>) {
      value = lines.next();
    }
  });
}

template <typename Part>
void fillList(std::optional<std::vector<Part>>& list, Lines& lines) {
  list.emplace(2);
  for (Part& part : *list) {
    fill(part, lines);
  }
}

report::ServerReport reportOf(std::string_view input) {
  const auto read = report::fromJson(input);
  if (read) {
    return *read;
  }
  require(!read.error().cause.empty());
  Lines lines(input);
  report::ServerReport made;
  made.read.status = report::ReadStatus::kComplete;
  made.read.time = "2024-11-02T10:20:30Z";
  fill(made.target, lines);
  fill(made.system, lines);
  fillList(made.health.events, lines);
  fillList(made.processors, lines);
  fillList(made.memory, lines);
  fillList(made.fans, lines);
  fillList(made.powerSupplies, lines);
  fillList(made.pciAdapters, lines);
  return made;
}

// RFC 8259, in one line of valid UTF-8, and read as it was written.
void checkJson(const report::ServerReport& report) {
  const std::string line = report::toJson(report);
  require(line.find_first_of("\r\n") == std::string::npos);
  boost::system::error_code failed;
  boost::json::parse(line, failed);
  require(!failed);
  const auto again = report::fromJson(line);
  require(again && report::toJson(*again) == line);
}

// RFC 4180: how many cells each row has.
std::vector<std::size_t> cellsOf(std::string_view csv) {
  std::vector<std::size_t> rows;
  std::size_t cells = 1;
  bool quoted = false;
  for (std::size_t i = 0; i < csv.size(); ++i) {
    if (csv[i] == '"') {
      quoted = !quoted;
    } else if (!quoted && csv[i] == ',') {
      ++cells;
    } else if (!quoted && csv[i] == '\n') {
      require(i > 0 && csv[i - 1] == '\r');
      rows.push_back(cells);
      cells = 1;
    }
  }
  require(!quoted && cells == 1);
  return rows;
}

void checkCsv(const report::ServerReport& report) {
  for (unsigned bit = 1; bit < report::kWantAll; bit <<= 1U) {
    const auto table = static_cast<report::Want>(bit);
    const std::vector<std::size_t> header =
        cellsOf(exporting::csvHeader(table));
    require(header.size() == 1);
    for (const std::size_t cells : cellsOf(exporting::csvRows(table, report))) {
      require(cells == header.front());
    }
  }
}

// The name of a sample with its labels: what stands before the last blank.
std::string_view seriesOf(std::string_view line) {
  const std::size_t blank = line.rfind(' ');
  require(blank != std::string_view::npos && blank + 1 < line.size());
  const std::string_view series = line.substr(0, blank);
  require(series.substr(0, 7) == "brivel_" && series.back() == '}');
  bool quoted = false;
  for (std::size_t i = 0; i < series.size(); ++i) {
    if (quoted && series[i] == '\\') {
      ++i;
    } else if (series[i] == '"') {
      quoted = !quoted;
    }
  }
  require(!quoted);
  return series;
}

// Text exposition format 0.0.4: one line a sample, no sample twice.
void checkPrometheus(const report::ServerReport& report) {
  exporting::PrometheusText text;
  text.add(report);
  text.add(report);
  const std::string all = text.text();
  std::set<std::string_view> known;
  std::string_view rest = all;
  while (!rest.empty()) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    require(line.size() < rest.size());
    rest.remove_prefix(line.size() + 1);
    if (line.substr(0, 2) != "# ") {
      require(known.insert(seriesOf(line)).second);
    }
  }
}

// The Monitoring Plugins' guidelines: lines without controls, and one bar
// before the performance data.
void checkPlugin(const report::ServerReport& report) {
  check::Verdict verdict = check::judge(report);
  const auto baseline = check::Baseline::parse(report::toJson(report));
  if (baseline) {
    baseline->judge(report, verdict);
    check::Verdict other = verdict;
    baseline->judge(report::ServerReport(), other);
  } else {
    require(!baseline.error().cause.empty());
  }
  check::ignore(check::IgnoreList(report.system.name), verdict);
  const std::string output = check::pluginOutput({verdict, verdict});
  require(std::all_of(output.begin(), output.end(), [](char c) {
    return c == '\n' || (static_cast<unsigned char>(c) >= 0x20 && c != 0x7F);
  }));
  require(std::count(output.begin(), output.end(), '|') <= 1);
  require(!output.empty() && output.back() == '\n');
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const StepBudget budget(2000, 50, size);
  const report::ServerReport report = reportOf(input);
  checkJson(report);
  checkCsv(report);
  checkPrometheus(report);
  checkPlugin(report);
  return 0;
}
