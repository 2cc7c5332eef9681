#include "suite/brivel/result_line.h"

#include "suite/base/text.h"
#include "suite/brivel/options/fold.h"
#include "syshealth/result/result_registry.h"

namespace brivel {
namespace {

// A text as a sentence: some messages of the catalogue end in a blank, some
// without a full stop.
std::string sentence(std::string text) {
  text.erase(text.find_last_not_of(' ') + 1);
  const bool ends = text.empty() || text.back() == '.' || text.back() == '?';
  return ends ? text : text + ".";
}

// "13: Connection failed."
std::string codeAndMessage(const RunResult& result) {
  const std::string code = std::to_string(result.code);
  if (result.message.empty() && result.combined) {
    return code + " (several items failed).";
  }
  return code + ": " +
         sentence(result.message.empty() ? getResultMessage(result.code)
                                         : result.message);
}

}  // namespace

std::string resultText(const RunResult& result) {
  std::string text = "result " + codeAndMessage(result);
  if (!result.cause.empty()) {
    text += " Cause: " +
            sentence(result.cause +
                     (result.remedy.empty() ? "" : "; " + result.remedy));
  }
  return text;
}

std::string resultLine(const RunResult& result, const std::string& logPath) {
  std::string line = "brivel: " + resultText(result);
  if (!logPath.empty()) {
    line += " Log: " + logPath;
  }
  return base::escapeControls(line);
}

std::string resultLines(const RunResult& result, const std::string& logPath,
                        std::size_t width) {
  std::string lines;
  const auto add = [&](const std::string& label, const std::string& text) {
    if (!text.empty()) {
      lines += folded(label, base::escapeControls(text), label.size(), width);
    }
  };
  add("brivel: result ", codeAndMessage(result));
  add("  cause:  ", result.cause);
  add("  remedy: ", result.remedy);
  add("  log:    ", logPath);
  return lines;
}

}  // namespace brivel
