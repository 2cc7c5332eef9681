#include "suite/local/controller/discovery.h"

#include <algorithm>
#include <boost/url/parse.hpp>
#include <boost/url/url_view.hpp>
#include <charconv>
#include <cstddef>

namespace local {
namespace {

constexpr std::uint16_t kDefaultPort = 443;

std::string lower(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return result;
}

// The value of a header of the answer; names are compared without case.
std::string_view header(std::string_view answer, std::string_view name) {
  while (!answer.empty()) {
    const std::size_t end = std::min(answer.find('\n'), answer.size());
    std::string_view line = answer.substr(0, end);
    answer.remove_prefix(std::min(end + 1, answer.size()));
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos ||
        lower(line.substr(0, colon)) != name) {
      continue;
    }
    line.remove_prefix(colon + 1);
    const std::size_t first = line.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
      return {};
    }
    return line.substr(first, line.find_last_not_of(" \t\r") - first + 1);
  }
  return {};
}

}  // namespace

std::optional<std::uint16_t> parseSearchAnswer(std::string_view answer,
                                               std::string_view uuid) {
  const std::string_view status = answer.substr(0, answer.find('\n'));
  if (status.substr(0, 12) != "HTTP/1.1 200") {
    return std::nullopt;
  }
  if (header(answer, "st").substr(0, kRedfishServiceType.size()) !=
      kRedfishServiceType) {
    return std::nullopt;
  }
  const std::string name = lower(header(answer, "usn"));
  if (!uuid.empty() && name.find(lower(uuid)) == std::string::npos) {
    return std::nullopt;
  }
  const std::string_view link = header(answer, "al");
  if (link.substr(0, 8) != "https://") {
    return std::nullopt;
  }
  const auto url = boost::urls::parse_uri(link);
  if (!url) {
    return std::nullopt;
  }
  const std::string_view digits = url->port();
  if (digits.empty()) {
    return kDefaultPort;
  }
  std::uint16_t port = 0;
  const char* end = digits.data() + digits.size();
  const auto result = std::from_chars(digits.data(), end, port);
  if (result.ec != std::errc() || result.ptr != end || port == 0) {
    return std::nullopt;
  }
  return port;
}

}  // namespace local
