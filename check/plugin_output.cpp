#include "check/plugin_output.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <set>
#include <string_view>
#include <tuple>

#include "check/baseline.h"
#include "suite/base/text.h"

namespace check {
namespace {

constexpr std::size_t kMostText = 400;
// Monitoring systems keep some kilobytes of an output.
constexpr std::size_t kMostDetails = kMostFindings;

// A text fit for a line: "|" begins performance data, ";" separates fields
// where the line is handed on.
std::string fit(const std::string& text) {
  std::string line = base::excerpt(text, kMostText);
  std::replace(line.begin(), line.end(), '|', '/');
  std::replace(line.begin(), line.end(), ';', ',');
  return line;
}

std::string count(int number, const std::string& one,
                  const std::string& several) {
  return std::to_string(number) + " " + (number == 1 ? one : several);
}

std::string textOf(const Finding& finding) {
  return std::string(nameOf(finding.category)) + ": " + finding.text;
}

// The first finding of a status that counts; null if there is none.
const Finding* firstOf(const Verdict& verdict, Status status) {
  const auto found =
      std::find_if(verdict.findings.begin(), verdict.findings.end(),
                   [&](const Finding& finding) {
                     return !finding.ignored && finding.status == status;
                   });
  return found == verdict.findings.end() ? nullptr : &*found;
}

// The text of a node: its worst finding, and how much more there is.
std::string summary(const Verdict& verdict) {
  const Status status = statusOf(verdict);
  int errors = countOf(verdict, Status::kCritical);
  int warnings = countOf(verdict, Status::kWarning);
  auto gaps = static_cast<int>(verdict.gaps.size());
  std::string text = "no active events";
  if (status == Status::kUnknown) {
    text = gaps > 0 ? verdict.gaps.front() : "the events were not read";
    gaps = std::max(gaps - 1, 0);
  } else if (const Finding* const finding = firstOf(verdict, status)) {
    text = textOf(*finding);
    --(status == Status::kCritical ? errors : warnings);
  }
  std::string more;
  const auto add = [&](int number, const std::string& part) {
    if (number > 0) {
      more += (more.empty() ? "" : ", ") + part;
    }
  };
  add(errors, "+" + count(errors, "error", "errors"));
  add(warnings, "+" + count(warnings, "warning", "warnings"));
  add(gaps, "+" + std::to_string(gaps) + " not read");
  const int ignored = countIgnored(verdict);
  add(ignored, std::to_string(ignored) + " ignored");
  return fit(text) + (more.empty() ? "" : " (" + more + ")");
}

std::string number(double value) {
  char digits[400];
  const auto end =
      std::to_chars(std::begin(digits), std::end(digits),
                    std::round(value * 1000) / 1000, std::chars_format::fixed);
  return std::string(digits, end.ptr);
}

// Performance data: 'label'=value[unit];warn;crit;min, with blanks between.
class PerformanceData {
 public:
  void addCount(const std::string& label, int value) {
    add(label + "=" + std::to_string(value) + ";;;0");
  }

  void addSeconds(double value) {
    if (std::isfinite(value)) {
      add("time=" + number(value) + "s;;;0");
    }
  }

  void addFan(const report::Fan& fan) {
    const bool inRpm = fan.speedRpm.has_value();
    const std::optional<double> speed = inRpm ? fan.speedRpm : fan.speedPercent;
    if (speed && std::isfinite(*speed)) {
      add("'fan_" + label(fan.name.empty() ? fan.id : fan.name) +
          "'=" + number(*speed) + (inRpm ? "" : "%"));
    }
  }

  const std::string& text() const { return text_; }

 private:
  // A label may hold neither quotes nor "=", and each stands for one value.
  std::string label(const std::string& name) {
    constexpr std::size_t kMostLabel = 64;
    std::string own = base::excerpt(name, kMostLabel);
    for (char& c : own) {
      if (c == '\'' || c == '=' || c == '|' || c == ';') {
        c = '_';
      }
    }
    std::string unique = own;
    for (int i = 2; !labels_.insert(unique).second; ++i) {
      unique = own + "_" + std::to_string(i);
    }
    return unique;
  }

  void add(const std::string& item) {
    text_ += (text_.empty() ? "" : " ") + item;
  }

  std::string text_;
  std::set<std::string> labels_;
};

std::string firstLine(Status status, const std::string& text,
                      const PerformanceData& data) {
  return std::string("BRIVEL ") + nameOf(status) + " - " + text + " | " +
         data.text() + "\n";
}

std::string detail(const char* mark, const std::string& text) {
  return std::string("[") + mark + "] " + fit(text) + "\n";
}

std::string details(const Verdict& verdict) {
  std::string lines;
  std::size_t left = kMostDetails;
  std::size_t untold = static_cast<std::size_t>(verdict.droppedIgnored);
  for (const int dropped : verdict.dropped) {
    untold += static_cast<std::size_t>(dropped);
  }
  const auto add = [&](const char* mark, const std::string& text) {
    if (left > 0) {
      --left;
      lines += detail(mark, text);
    } else {
      ++untold;
    }
  };
  const auto addFindings = [&](bool ignored, Status status) {
    for (const Finding& finding : verdict.findings) {
      if (finding.ignored == ignored && finding.status == status) {
        std::string names = finding.messageId;
        names += (names.empty() || finding.origin.empty() ? "" : ", ");
        names += finding.origin;
        add(ignored ? "IGNORED" : nameOf(status),
            textOf(finding) + (names.empty() ? "" : " (" + names + ")"));
      }
    }
  };
  addFindings(false, Status::kCritical);
  for (const std::string& gap : verdict.gaps) {
    add(nameOf(Status::kUnknown), gap);
  }
  addFindings(false, Status::kWarning);
  addFindings(true, Status::kCritical);
  addFindings(true, Status::kWarning);
  if (untold > 0) {
    lines += "... and " + std::to_string(untold) + " more\n";
  }
  return lines;
}

std::string outputOfOne(const Verdict& verdict) {
  PerformanceData data;
  if (verdict.eventsRead) {
    data.addCount("errors", countOf(verdict, Status::kCritical));
    data.addCount("warnings", countOf(verdict, Status::kWarning));
  }
  data.addSeconds(verdict.seconds);
  for (std::size_t i = 0; i < std::min(verdict.fans.size(), kMostFans); ++i) {
    data.addFan(verdict.fans[i]);
  }
  return firstLine(statusOf(verdict), summary(verdict), data) +
         details(verdict);
}

// Orders nodes for the output: the worst first, then by name.
bool isBefore(const Verdict& left, const Verdict& right) {
  const Status ofLeft = statusOf(left);
  const Status ofRight = statusOf(right);
  if (ofLeft != ofRight) {
    return worse(ofLeft, ofRight) == ofLeft;
  }
  return std::tie(left.target.name, left.target.node) <
         std::tie(right.target.name, right.target.node);
}

std::string outputOfSeveral(std::vector<Verdict> verdicts) {
  std::stable_sort(verdicts.begin(), verdicts.end(), isBefore);
  int numbers[4] = {};
  int errors = 0;
  int warnings = 0;
  int unread = 0;
  double seconds = 0;
  std::string lines;
  for (const Verdict& verdict : verdicts) {
    const Status status = statusOf(verdict);
    ++numbers[static_cast<std::size_t>(status)];
    errors += countOf(verdict, Status::kCritical);
    warnings += countOf(verdict, Status::kWarning);
    unread += isWhole(verdict) ? 0 : 1;
    seconds = std::max(seconds, verdict.seconds);
    lines += std::string("[") + nameOf(status) + "] " +
             fit(nameOf(verdict.target)) + ": " + summary(verdict) + "\n";
  }
  const auto numberOf = [&](Status status) {
    return numbers[static_cast<std::size_t>(status)];
  };
  std::string text;
  for (const Status status :
       {Status::kCritical, Status::kUnknown, Status::kWarning, Status::kOk}) {
    if (numberOf(status) > 0) {
      text += (text.empty() ? "" : ", ") + std::to_string(numberOf(status)) +
              " " + nameOf(status);
    }
  }
  PerformanceData data;
  data.addCount("errors", errors);
  data.addCount("warnings", warnings);
  data.addCount("servers", static_cast<int>(verdicts.size()));
  data.addCount("unread", unread);
  data.addSeconds(seconds);
  return firstLine(
             statusOf(verdicts),
             count(static_cast<int>(verdicts.size()), "server", "servers") +
                 ": " + text,
             data) +
         lines;
}

}  // namespace

Status statusOf(const std::vector<Verdict>& verdicts) {
  if (verdicts.empty()) {
    return Status::kUnknown;
  }
  Status status = Status::kOk;
  for (const Verdict& verdict : verdicts) {
    status = worse(status, statusOf(verdict));
  }
  return status;
}

std::string pluginOutput(std::vector<Verdict> verdicts) {
  if (verdicts.empty()) {
    return unknownLine("no server was read");
  }
  return verdicts.size() == 1 ? outputOfOne(verdicts.front())
                              : outputOfSeveral(std::move(verdicts));
}

std::string unknownLine(const std::string& text) {
  return "BRIVEL UNKNOWN - " + fit(text) + "\n";
}

}  // namespace check
