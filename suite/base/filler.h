#pragma once

#include <string_view>

namespace base {

/// Whether a text is a placeholder that firmware has in place of a value:
/// "N/A", "To be filled by O.E.M.", dots alone, one character repeated, digits
/// in order, or the name of the field itself ("SerNum00", "Part Number").
/// Letter case does not count. The text is to be clean (`cleanText`).
bool isFiller(std::string_view text);

}  // namespace base
