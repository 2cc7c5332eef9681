#include "suite/connection/settings/values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <system_error>

namespace connection {
namespace {

constexpr double kOneDay = 86400.0;
constexpr std::string_view kPinPrefix = "sha256//";
constexpr std::size_t kDigestLength = 44;  // 32 bytes in base64, padded.

bool isDigest(std::string_view text) {
  return text.size() == kDigestLength && text.back() == '=' &&
         std::all_of(text.begin(), text.end() - 1, [](char c) {
           return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
                  (c >= '0' && c <= '9') || c == '+' || c == '/';
         });
}

}  // namespace

std::optional<std::chrono::milliseconds> timeLimit(double seconds) {
  const double milliseconds = std::ceil(seconds * 1000.0);
  if (!(milliseconds >= 1.0) || !(seconds <= kOneDay)) {
    return std::nullopt;
  }
  return std::chrono::milliseconds(static_cast<long>(milliseconds));
}

std::optional<std::chrono::milliseconds> timeLimit(std::string_view text) {
  double seconds = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, failure] =
      std::from_chars(text.data(), end, seconds, std::chars_format::fixed);
  if (failure != std::errc{} || stop != end) {
    return std::nullopt;
  }
  return timeLimit(seconds);
}

bool isPin(std::string_view text) {
  while (true) {
    const std::size_t end = std::min(text.find(';'), text.size());
    const std::string_view key = text.substr(0, end);
    if (key.substr(0, kPinPrefix.size()) != kPinPrefix ||
        !isDigest(key.substr(kPinPrefix.size()))) {
      return false;
    }
    if (end == text.size()) {
      return true;
    }
    text.remove_prefix(end + 1);
  }
}

}  // namespace connection
