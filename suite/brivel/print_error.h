#pragma once

#include <string>

namespace brivel {

/// Writes "brivel: " and the text as one line on standard error. Control
/// characters are escaped.
void printError(const std::string& text);

}  // namespace brivel
