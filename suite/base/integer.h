#pragma once

#include <optional>
#include <string_view>

namespace base {

/// The decimal number that the whole text is, with a leading minus or none;
/// nothing for any other text and for numbers beyond `int`. Independent of the
/// locale.
std::optional<int> parseInteger(std::string_view text);

}  // namespace base
