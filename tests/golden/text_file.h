#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace golden {

/// Writes a file, or removes it when the text is empty, because a file that
/// is missing stands for an empty text.
void writeText(const std::filesystem::path& file, const std::string& text);

/// The lines of a text without their ends. A last line need not have one.
std::vector<std::string> linesOf(std::string_view text);

/// The text with every occurrence of `from`, which is not empty, replaced.
std::string replaceAll(std::string text, std::string_view from,
                       std::string_view to);

}  // namespace golden
