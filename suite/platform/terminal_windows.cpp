#include "suite/platform/terminal.h"

#include <windows.h>
#include <io.h>

namespace platform {
namespace {

HANDLE handleOf(int descriptor) {
  return reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
}

}  // namespace

bool isTerminal(int descriptor) {
  // The null device is no console, though the C library takes it for one.
  DWORD mode = 0;
  const HANDLE handle = handleOf(descriptor);
  return GetConsoleMode(handle, &mode) != 0 &&
         SetConsoleMode(handle, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

std::size_t terminalWidth(int descriptor, std::size_t otherwise) {
  CONSOLE_SCREEN_BUFFER_INFO screen = {};
  return GetConsoleScreenBufferInfo(handleOf(descriptor), &screen) != 0
             ? static_cast<std::size_t>(screen.srWindow.Right -
                                        screen.srWindow.Left + 1)
             : otherwise;
}

void writeRaw(int descriptor, std::string_view text) {
  DWORD written = 0;
  WriteFile(handleOf(descriptor), text.data(), static_cast<DWORD>(text.size()),
            &written, nullptr);
}

}  // namespace platform
