// The lines of an answer's head, the time to wait that it names, and what a
// recording stores of it.
#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/budget.h"
#include "fuzz/require.h"
#include "suite/http/response_headers.h"
#include "suite/http/transport.h"
#include "suite/redfish/recorded/stored_answer.h"
#include "suite/redfish/session/retry_after.h"

namespace {

void checkDelay(std::string_view retryAfter) {
  using std::chrono::milliseconds;
  // A day in 1994, and the end of what 32 bits count.
  for (const std::time_t now : {784111777L, 2147483647L}) {
    const milliseconds delay =
        redfish::retryDelay(retryAfter, static_cast<int>(retryAfter.size() % 8),
                            std::chrono::system_clock::from_time_t(now));
    require(delay >= milliseconds(1000) && delay <= milliseconds(30000));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const StepBudget budget(2000, 50, size);
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  http::ResponseHeaders headers;
  std::string_view rest = input;
  bool taken = true;
  while (taken && !rest.empty()) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(rest.size(), line.size() + 1));
    taken = headers.add(line);
  }
  require(taken != headers.tooLarge());
  require(size <= http::kMaxHeaderBytes || headers.begun());
  const std::string& token = headers.authToken().text();
  require(std::all_of(token.begin(), token.end(),
                      [](char c) { return c > ' ' && c <= '~'; }));
  checkDelay(headers.retryAfter());
  checkDelay(input);
  if (const auto stored = redfish::parseStoredAnswer(input)) {
    require(stored->failure ||
            (stored->status >= 100 && stored->status <= 599));
    const auto again = redfish::parseStoredAnswer(redfish::textOf(*stored));
    require(again && again->status == stored->status);
  }
  const std::string name = redfish::bodyFileName(redfish::distinctQuery(input));
  require(name.find_first_of("/\\:*?\"<>|\n") == std::string::npos);
  headers.clear();
  require(!headers.begun());
  return 0;
}
