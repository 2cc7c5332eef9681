#pragma once

#include <string>
#include <string_view>

namespace base {

/// A text made safe for one line of a log that people read in a terminal:
/// control characters (C0, DEL, C1), line separators, marks that change the
/// writing direction, and bytes that are no UTF-8 are shown as escapes ("\n",
/// "\x1b", "\u202e"); all else stays.
std::string escapeControls(std::string_view text);

}  // namespace base
