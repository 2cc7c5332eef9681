#include "suite/brivel/print_error.h"

#include <algorithm>
#include <iostream>

#include "suite/log/escape.h"

namespace brivel {

void printError(const std::string& text) {
  std::cerr << "brivel: " << logging::escapeControls(text) << std::endl;
}

int plugInUnknown(const std::string& text) {
  constexpr int kUnknown = 3;
  // A bar would begin the performance data.
  std::string line = logging::escapeControls(text);
  std::replace(line.begin(), line.end(), '|', '/');
  std::cout << "BRIVEL UNKNOWN - " << line << std::endl;
  return kUnknown;
}

}  // namespace brivel
