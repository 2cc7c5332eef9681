#include "suite/connection/password/silent_prompt.h"

#include <windows.h>

#include <array>
#include <boost/nowide/convert.hpp>
#include <utility>

#include "suite/base/secret.h"
#include "suite/connection/password/password_line.h"
#include "suite/platform/interrupt.h"
#include "suite/platform/interrupt_windows.h"
#include "suite/platform/memory.h"

namespace connection {
namespace {

using base::FailureKind;

constexpr std::size_t kMostTyped = 1026;  // With the line end.

// Time in which the interrupt that ended a wait for input leaves its mark:
// the two come in different threads.
constexpr DWORD kMillisecondsForMark = 200;

// A file that is closed at the end of its scope.
class File {
 public:
  explicit File(HANDLE handle) : handle_(handle) {}
  ~File() {
    if (open()) {
      CloseHandle(handle_);
    }
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  bool open() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE handle() const { return handle_; }

 private:
  HANDLE handle_;
};

// Keeps a console from showing what is typed.
class SilentConsole {
 public:
  explicit SilentConsole(HANDLE input) : input_(input) {
    silenced_ =
        GetConsoleMode(input, &before_) != 0 &&
        SetConsoleMode(input, ENABLE_LINE_INPUT | ENABLE_PROCESSED_INPUT) != 0;
  }
  ~SilentConsole() {
    if (silenced_) {
      SetConsoleMode(input_, before_);
    }
  }
  SilentConsole(const SilentConsole&) = delete;
  SilentConsole& operator=(const SilentConsole&) = delete;

  bool silenced() const { return silenced_; }

 private:
  HANDLE input_;
  bool silenced_ = false;
  DWORD before_ = 0;
};

void show(HANDLE console, const std::string& text) {
  const std::wstring wide = boost::nowide::widen(text);
  DWORD written = 0;
  // A question that cannot be shown is still answered, or interrupted.
  WriteConsoleW(console, wide.data(), static_cast<DWORD>(wide.size()), &written,
                nullptr);
}

base::Result<base::Secret> readAnswer(HANDLE input) {
  std::array<wchar_t, kMostTyped> typed{};
  DWORD count = 0;
  const BOOL read = ReadConsoleW(
      input, typed.data(), static_cast<DWORD>(typed.size()), &count, nullptr);
  if (count == 0 && platform::interruptEvent() != nullptr) {
    WaitForSingleObject(platform::interruptEvent(), kMillisecondsForMark);
  }
  std::string line = boost::nowide::narrow(typed.data(), count);
  platform::overwrite(typed.data(), sizeof(typed));
  if (platform::interrupted()) {
    base::wipe(line);
    return base::makeFailure(FailureKind::kInterrupted,
                             "interrupted by the user");
  }
  if (read == 0) {
    return base::makeFailure(FailureKind::kFileUnreadable,
                             "the answer cannot be read");
  }
  if (!line.empty() && line.back() == '\n') {
    line.pop_back();
  }
  return passwordOf(std::move(line), "the answer");
}

}  // namespace

bool inputIsTerminal() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), &mode) != 0;
}

std::optional<base::Result<base::Secret>> askSilently(
    const std::string& question) {
  const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
  const File console(CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE,
                                 FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                 OPEN_EXISTING, 0, nullptr));
  const SilentConsole silent(input);
  if (!silent.silenced()) {
    return std::nullopt;
  }
  show(console.handle(), question);
  base::Result<base::Secret> password = readAnswer(input);
  show(console.handle(), "\n");
  return password;
}

}  // namespace connection
