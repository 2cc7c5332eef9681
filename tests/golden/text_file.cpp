#include "tests/golden/text_file.h"

#include <fstream>
#include <stdexcept>

namespace golden {

void writeText(const std::filesystem::path& file, const std::string& text) {
  if (text.empty()) {
    std::filesystem::remove(file);
    return;
  }
  std::ofstream out(file, std::ios::binary);
  if (!(out << text) || !out.flush()) {
    throw std::runtime_error("cannot write " + file.string());
  }
}

std::vector<std::string> linesOf(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const auto end = text.find('\n');
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines;
}

std::string replaceAll(std::string text, std::string_view from,
                       std::string_view to) {
  for (auto at = text.find(from); at != std::string::npos;
       at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

}  // namespace golden
