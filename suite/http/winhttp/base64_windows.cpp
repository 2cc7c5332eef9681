#include "suite/http/winhttp/base64_windows.h"

#include <windows.h>
#include <wincrypt.h>

namespace http {

std::string toBase64(std::string_view bytes) {
  constexpr DWORD kForm = CRYPT_STRING_BASE64 | CRYPT_STRING_NOCRLF;
  const auto* const data = reinterpret_cast<const BYTE*>(bytes.data());
  const auto length = static_cast<DWORD>(bytes.size());
  DWORD size = 0;  // With the zero at the end.
  if (CryptBinaryToStringA(data, length, kForm, nullptr, &size) == 0) {
    return "";
  }
  std::string text(size, '\0');
  if (CryptBinaryToStringA(data, length, kForm, text.data(), &size) == 0) {
    return "";
  }
  text.resize(size);
  return text;
}

std::string fromBase64(std::string_view text) {
  const auto length = static_cast<DWORD>(text.size());
  DWORD size = 0;
  if (CryptStringToBinaryA(text.data(), length, CRYPT_STRING_BASE64, nullptr,
                           &size, nullptr, nullptr) == 0) {
    return "";
  }
  std::string bytes(size, '\0');
  if (CryptStringToBinaryA(text.data(), length, CRYPT_STRING_BASE64,
                           reinterpret_cast<BYTE*>(bytes.data()), &size,
                           nullptr, nullptr) == 0) {
    return "";
  }
  bytes.resize(size);
  return bytes;
}

}  // namespace http
