#include "suite/brivel/print_error.h"

#include <algorithm>
#include <iostream>

#include "suite/base/text.h"

namespace brivel {

void printError(const std::string& text) {
  std::cerr << "brivel: " << base::escapeControls(text) << std::endl;
}

int plugInUnknown(const std::string& text) {
  constexpr int kUnknown = 3;
  // A bar would begin the performance data.
  std::string line = base::escapeControls(text);
  std::replace(line.begin(), line.end(), '|', '/');
  std::cout << "BRIVEL UNKNOWN - " << line << std::endl;
  return kUnknown;
}

}  // namespace brivel
