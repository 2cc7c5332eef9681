#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace base {

// Texts from outside, made fit to be shown. "Controls" are the control
// characters C0, DEL and C1 and the line separators U+2028 and U+2029; "unseen
// characters" Unicode's format characters (category Cf: marks of the writing
// direction, characters without width, tags, the byte order mark) and
// noncharacters.

/// A text made fit for messages and reports: blanks around it are gone, each
/// run of blanks that holds a control is one blank, unseen characters are
/// dropped, and bytes that are no UTF-8 become U+FFFD.
std::string cleanText(std::string_view text);

/// The same, cut to at most `limit` bytes (4 or more); a cut text ends in
/// "...".
std::string excerpt(std::string_view text, std::size_t limit);

/// A text made safe for one line that people read in a terminal: controls,
/// unseen characters and bytes that are no UTF-8 are shown as escapes ("\n",
/// "\x1b", "\u202e"); all else stays.
std::string escapeControls(std::string_view text);

}  // namespace base
