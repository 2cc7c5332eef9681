#include "suite/brivel/console.h"

#include <algorithm>
#include <iostream>

#include "suite/base/text.h"
#include "suite/brivel/exit_status.h"
#include "suite/platform/standard_streams.h"
#include "syshealth/result/result_codes.h"

namespace brivel {

void printError(const std::string& text) {
  std::cerr << "brivel: " << base::escapeControls(text) << std::endl;
}

int show(std::string_view text) {
  std::cout << text << std::flush;
  return platform::outputIsWhole() ? kExitSuccess : kResultWriteFileFailed;
}

int plugInUnknown(const std::string& text) {
  constexpr int kUnknown = 3;
  // A bar would begin the performance data.
  std::string line = base::escapeControls(text);
  std::replace(line.begin(), line.end(), '|', '/');
  std::cout << "BRIVEL UNKNOWN - " << line << std::endl;
  return kUnknown;
}

int usageError(const std::string& text, bool plugIn) {
  if (plugIn) {
    return plugInUnknown(text);
  }
  printError(text);
  std::cerr << "Try 'brivel --help'." << std::endl;
  return kExitUsage;
}

}  // namespace brivel
