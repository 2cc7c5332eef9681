#include "suite/platform/last_resort.h"

#include <windows.h>

#include <algorithm>
#include <mutex>
#include <set>
#include <string_view>

namespace platform {
namespace {

using Clock = std::chrono::steady_clock;

// What is watched at present, by its ends. Never destroyed: a thread may
// outlive the end of main.
struct Watched {
  std::mutex mutex;
  std::multiset<Clock::time_point> ends;
};

Watched& watched() {
  static auto& all = *new Watched;
  return all;
}

// Runs in a thread of the system's.
void CALLBACK onTimer(PTP_CALLBACK_INSTANCE /*instance*/, void* /*context*/,
                      PTP_TIMER /*timer*/) {
  constexpr std::string_view kText =
      "brivel: the run did not end in time and is ended here; a session that "
      "it opened stays open until it times out on the controller\r\n";
  DWORD written = 0;
  WriteFile(GetStdHandle(STD_ERROR_HANDLE), kText.data(),
            static_cast<DWORD>(kText.size()), &written, nullptr);
  TerminateProcess(GetCurrentProcess(), kLastResortStatus);
}

// With the mutex held.
void arm(const std::multiset<Clock::time_point>& ends) {
  static const PTP_TIMER timer =
      CreateThreadpoolTimer(onTimer, nullptr, nullptr);
  if (timer == nullptr) {
    return;
  }
  if (ends.empty()) {
    SetThreadpoolTimer(timer, nullptr, 0, 0);
    return;
  }
  // No run takes a day: a later end means none.
  constexpr std::chrono::hours kMost{24};
  const Clock::time_point now = Clock::now();
  const Clock::time_point end = std::min(*ends.rbegin(), now + kMost);
  const auto left = std::max<Clock::duration>(end - now + kLastResort,
                                              std::chrono::seconds(1));
  // Relative times are negative, in steps of 100 ns.
  ULARGE_INTEGER due{};
  due.QuadPart = static_cast<ULONGLONG>(
      -10 * std::chrono::ceil<std::chrono::microseconds>(left).count());
  FILETIME time{due.LowPart, due.HighPart};
  SetThreadpoolTimer(timer, &time, 0, 0);
}

}  // namespace

LastResort::LastResort(Clock::time_point until) : until_(until) {
  Watched& all = watched();
  const std::lock_guard<std::mutex> lock(all.mutex);
  all.ends.insert(until_);
  arm(all.ends);
}

LastResort::~LastResort() {
  Watched& all = watched();
  const std::lock_guard<std::mutex> lock(all.mutex);
  all.ends.erase(all.ends.find(until_));
  arm(all.ends);
}

// A second Ctrl+C ends the process here, and the system does so itself when
// the console is closed.
void interruptLastResort() noexcept {}

}  // namespace platform
