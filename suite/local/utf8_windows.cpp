#include "suite/local/utf8_windows.h"

#include <windows.h>

namespace local {

std::string utf8(std::wstring_view text) {
  constexpr std::size_t kMostBytes = 3;  // For each unit of UTF-16.
  if (text.empty()) {
    return "";
  }
  std::string bytes(text.size() * kMostBytes, '\0');
  const int size = WideCharToMultiByte(
      CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(),
      static_cast<int>(bytes.size()), nullptr, nullptr);
  bytes.resize(static_cast<std::size_t>(size));
  return bytes;
}

}  // namespace local
