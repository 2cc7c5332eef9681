#include "tests/support/file_text.h"

#include <fstream>
#include <iterator>

namespace support {

std::optional<std::string> readFile(const std::filesystem::path& file) {
  std::error_code error;
  if (std::filesystem::is_directory(file, error)) {
    return std::nullopt;  // Which opens, and reads as nothing.
  }
  std::ifstream stream(file, std::ios::binary);
  std::string text(std::istreambuf_iterator<char>(stream), {});
  return stream.good() || stream.eof() ? std::optional(std::move(text))
                                       : std::nullopt;
}

std::string fileText(const std::filesystem::path& file) {
  return readFile(file).value_or(std::string());
}

}  // namespace support
