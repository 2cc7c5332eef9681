#include "suite/redfish/session/retry_after.h"

#include <algorithm>
#include <charconv>
#include <ctime>

#include "suite/http/http_date.h"

namespace redfish {
namespace {

using Clock = std::chrono::system_clock;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr milliseconds kShortest = seconds(1);
constexpr milliseconds kLongest = seconds(30);

}  // namespace

milliseconds retryDelay(std::string_view retryAfter, int attempt,
                        std::chrono::system_clock::time_point now) {
  if (!retryAfter.empty()) {
    unsigned long count = 0;
    const char* end = retryAfter.data() + retryAfter.size();
    const auto read = std::from_chars(retryAfter.data(), end, count);
    if (read.ptr == end && read.ec == std::errc()) {
      return std::clamp<milliseconds>(seconds(std::min(count, 30UL)), kShortest,
                                      kLongest);
    }
    if (read.ptr == end && read.ec == std::errc::result_out_of_range) {
      return kLongest;
    }
    if (const auto date = http::parseDate(retryAfter)) {
      // Bounded first: the clock cannot count to every date.
      const std::time_t today = Clock::to_time_t(now);
      const Clock::time_point then = Clock::from_time_t(
          std::clamp(*date, today, today + 2 * kLongest / seconds(1)));
      return std::clamp(std::chrono::duration_cast<milliseconds>(then - now),
                        kShortest, kLongest);
    }
  }
  return std::min<milliseconds>(kShortest * (1 << std::clamp(attempt, 0, 5)),
                                kLongest);
}

}  // namespace redfish
