#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace brivel {

/// Folds the words of `text` behind what the first line begins with, so that
/// no line is wider than `width` unless one word is. All further lines begin
/// with `indent` blanks. Every line has its end.
std::string folded(std::string firstLine, std::string_view text,
                   std::size_t indent, std::size_t width);

}  // namespace brivel
