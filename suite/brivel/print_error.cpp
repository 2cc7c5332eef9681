#include "suite/brivel/print_error.h"

#include <iostream>

#include "suite/log/escape.h"

namespace brivel {

void printError(const std::string& text) {
  std::cerr << "brivel: " << logging::escapeControls(text) << std::endl;
}

}  // namespace brivel
