#pragma once

#include <string>

namespace brivel {

/// Writes "brivel: " and the text as one line on standard error. Control
/// characters are escaped.
void printError(const std::string& text);

/// Writes the line by which a monitoring plug-in says that it knows nothing,
/// "BRIVEL UNKNOWN - " and the text, on standard output. Returns the exit
/// status that goes with it, 3.
int plugInUnknown(const std::string& text);

}  // namespace brivel
