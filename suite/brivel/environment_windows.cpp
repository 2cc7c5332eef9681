#include "suite/brivel/environment.h"

#include <cstdlib>

#include "suite/connection/utf16_windows.h"

namespace brivel {

std::string environmentValue(const char* name) {
  const wchar_t* const value = _wgetenv(connection::toUtf16(name).c_str());
  return value == nullptr ? "" : connection::toUtf8(value);
}

}  // namespace brivel
