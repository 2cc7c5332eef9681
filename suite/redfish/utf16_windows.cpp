#include "suite/redfish/utf16_windows.h"

#include <windows.h>

namespace redfish {

std::string toUtf8(std::wstring_view text) {
  const int length = static_cast<int>(text.size());
  const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr,
                                       0, nullptr, nullptr);
  std::string result(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), length, result.data(), size,
                      nullptr, nullptr);
  return result;
}

std::wstring toUtf16(std::string_view text) {
  const int length = static_cast<int>(text.size());
  const int size =
      MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
  std::wstring result(static_cast<std::size_t>(size), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), length, result.data(), size);
  return result;
}

}  // namespace redfish
