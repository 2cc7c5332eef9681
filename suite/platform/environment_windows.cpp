#include "suite/platform/environment.h"

#include <windows.h>

#include <boost/nowide/convert.hpp>
#include <cstdlib>
#include <cwchar>

#include "suite/platform/memory.h"

namespace platform {

std::string environmentValue(const char* name) {
  const wchar_t* const value = _wgetenv(boost::nowide::widen(name).c_str());
  return value == nullptr ? "" : boost::nowide::narrow(value);
}

std::optional<std::string> takeEnvironmentVariable(const char* name) {
  const std::wstring wideName = boost::nowide::widen(name);
  wchar_t* const value = _wgetenv(wideName.c_str());
  if (value == nullptr) {
    return std::nullopt;
  }
  std::string text = boost::nowide::narrow(value);
  // The C library keeps a copy of the process's own environment.
  overwrite(value, std::wcslen(value) * sizeof(wchar_t));
  _wputenv_s(wideName.c_str(), L"");
  SetEnvironmentVariableW(wideName.c_str(), nullptr);
  return text;
}

}  // namespace platform
