#include "suite/http/http_date.h"

#include <algorithm>
#include <iomanip>
#include <locale>
#include <sstream>
#include <string>

namespace http {
namespace {

std::time_t fromUtc(std::tm parts) {
#if defined(_WIN32)
  return _mkgmtime(&parts);
#else
  return timegm(&parts);
#endif
}

}  // namespace

std::optional<std::time_t> parseDate(std::string_view text) {
  std::istringstream in{std::string(text)};
  in.imbue(std::locale::classic());
  std::tm parts{};
  in >> std::get_time(&parts, "%a, %d %b %Y %H:%M:%S");
  // Not every system counts to the year 9999 (Windows: 3000).
  constexpr int kLastYear = 2900 - 1900;
  parts.tm_year = std::min(parts.tm_year, kLastYear);
  const std::time_t time = in.fail() ? -1 : fromUtc(parts);
  if (time == -1) {
    return std::nullopt;
  }
  return time;
}

}  // namespace http
