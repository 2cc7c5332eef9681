#pragma once

#include <string>
#include <string_view>

namespace brivel {

/// Writes "brivel: " and the text as one line on standard error. Control
/// characters are escaped.
void printError(const std::string& text);

/// Writes a text on standard output. Returns the exit status: 0, or the result
/// code of a file that cannot be written.
int show(std::string_view text);

/// Writes the line by which a monitoring plug-in says that it knows nothing,
/// "BRIVEL UNKNOWN - " and the text, on standard output. Returns the exit
/// status that goes with it, 3.
int plugInUnknown(const std::string& text);

/// Reports a mistake in the command line or the settings; a monitoring plug-in
/// says so in the way of plug-ins. Returns the exit status.
int usageError(const std::string& text, bool plugIn = false);

}  // namespace brivel
