#include "suite/platform/last_resort.h"

#include <windows.h>

#include <algorithm>
#include <string_view>

namespace platform {
namespace {

using Clock = std::chrono::steady_clock;

// Runs in a thread of the system's.
void CALLBACK onTimer(PTP_CALLBACK_INSTANCE /*instance*/, void* /*context*/,
                      PTP_TIMER /*timer*/) {
  constexpr std::string_view kText =
      "brivel: the run did not end in time and is ended here; a session that "
      "it opened stays open until it times out on the controller\r\n";
  for (const HANDLE file : {GetStdHandle(STD_ERROR_HANDLE),
                            reinterpret_cast<HANDLE>(lastWordsFile())}) {
    DWORD written = 0;
    WriteFile(file, kText.data(), static_cast<DWORD>(kText.size()), &written,
              nullptr);
  }
  TerminateProcess(GetCurrentProcess(), kLastResortStatus);
}

}  // namespace

void LastResort::setTimer(std::optional<Clock::duration> left) {
  static const PTP_TIMER timer =
      CreateThreadpoolTimer(onTimer, nullptr, nullptr);
  if (timer == nullptr) {
    return;
  }
  if (!left) {
    SetThreadpoolTimer(timer, nullptr, 0, 0);
    return;
  }
  left = std::max<Clock::duration>(*left, std::chrono::seconds(1));
  // Relative times are negative, in steps of 100 ns.
  ULARGE_INTEGER due{};
  due.QuadPart = static_cast<ULONGLONG>(
      -10 * std::chrono::ceil<std::chrono::microseconds>(*left).count());
  FILETIME time{due.LowPart, due.HighPart};
  SetThreadpoolTimer(timer, &time, 0, 0);
}

// A second Ctrl+C ends the process here, and the system does so itself when
// the console is closed.
void interruptLastResort() noexcept {}

}  // namespace platform
