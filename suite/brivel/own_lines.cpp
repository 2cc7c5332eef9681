#include "suite/brivel/own_lines.h"

#include <iostream>

#include "suite/log/escape.h"

namespace brivel {

void tell(const std::string& text) {
  std::cerr << "brivel: " << logging::escapeControls(text) << std::endl;
}

}  // namespace brivel
