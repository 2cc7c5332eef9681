#include "suite/brivel/result_line.h"

#include "suite/log/escape.h"
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

}  // namespace

std::string resultText(const RunResult& result) {
  const std::string message =
      result.message.empty() ? getResultMessage(result.code) : result.message;
  std::string text =
      "result " + std::to_string(result.code) + ": " + sentence(message);
  if (!result.cause.empty()) {
    text += " Cause: " + sentence(result.cause);
  }
  return text;
}

std::string resultLine(const RunResult& result, const std::string& logPath) {
  std::string line = "brivel: " + resultText(result);
  if (!logPath.empty()) {
    line += " Log: " + logPath;
  }
  return logging::escapeControls(line);
}

}  // namespace brivel
