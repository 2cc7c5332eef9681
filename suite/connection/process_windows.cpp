#include "suite/connection/process.h"

#include <windows.h>

#include <cstdlib>
#include <cwchar>

#include "suite/redfish/secret.h"
#include "suite/redfish/utf16_windows.h"

namespace connection {

void forbidMemoryDumps() {
  // Without its dialogue, error reporting makes no dump either.
  SetErrorMode(GetErrorMode() | SEM_NOGPFAULTERRORBOX);
}

std::optional<std::string> takeVariable(const char* name) {
  const std::wstring wideName = redfish::toUtf16(name);
  wchar_t* const value = _wgetenv(wideName.c_str());
  if (value == nullptr) {
    return std::nullopt;
  }
  std::string text = redfish::toUtf8(value);
  // The C library keeps a copy of the process's own environment.
  redfish::overwrite(value, std::wcslen(value) * sizeof(wchar_t));
  _wputenv_s(wideName.c_str(), L"");
  SetEnvironmentVariableW(wideName.c_str(), nullptr);
  return text;
}

}  // namespace connection
