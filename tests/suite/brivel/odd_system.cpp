// Preloaded into the program: a system clock that jumps in the midst of a run,
// and a name server that has all hosts on this one, answers for a while and
// then hangs.
//
// BRIVEL_CLOCK_JUMP   by how many seconds
// BRIVEL_CLOCK_AFTER  how often the clock is looked at before it jumps
// BRIVEL_NAMES_FOUND  how often names are found before a search hangs

#include <dlfcn.h>
#include <netdb.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <ctime>
#include <limits>

namespace {

std::atomic<long> looks{0};
std::atomic<long> searches{0};

long setting(const char* name, long otherwise) {
  const char* const text = std::getenv(name);
  return text == nullptr ? otherwise : std::strtol(text, nullptr, 10);
}

// The system's clock at a look.
timespec wallClock() {
  static const long kJump = setting("BRIVEL_CLOCK_JUMP", 0);
  static const long kAfter = setting("BRIVEL_CLOCK_AFTER", 0);
  timespec now{};
  syscall(SYS_clock_gettime, CLOCK_REALTIME, &now);
  if (looks++ >= kAfter) {
    now.tv_sec += kJump;
  }
  return now;
}

}  // namespace

extern "C" {

int clock_gettime(clockid_t clock, timespec* now) noexcept {
  if (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE) {
    *now = wallClock();
    return 0;
  }
  return static_cast<int>(syscall(SYS_clock_gettime, clock, now));
}

int gettimeofday(timeval* now, void* /*zone*/) noexcept {
  const timespec wall = wallClock();
  constexpr long kNanoseconds = 1000;
  *now = {wall.tv_sec, wall.tv_nsec / kNanoseconds};
  return 0;
}

std::time_t time(std::time_t* now) noexcept {
  const std::time_t wall = wallClock().tv_sec;
  if (now != nullptr) {
    *now = wall;
  }
  return wall;
}

int getaddrinfo(const char* /*name*/, const char* service,
                const addrinfo* hints, addrinfo** found) {
  static const long kFound =
      setting("BRIVEL_NAMES_FOUND", std::numeric_limits<long>::max());
  static const auto kNext =
      reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
  while (searches >= kFound) {
    pause();
  }
  ++searches;
  return kNext("127.0.0.1", service, hints, found);
}

}  // extern "C"
