#include "suite/local/controller/discovery.h"

#include <algorithm>
#include <boost/url/parse.hpp>
#include <boost/url/url_view.hpp>
#include <cstddef>

#include "suite/base/ascii.h"
#include "suite/base/numbers.h"

namespace local {
namespace {

constexpr std::uint16_t kDefaultPort = 443;

// The value of a header of the answer; names are compared without case.
std::string_view header(std::string_view answer, std::string_view name) {
  while (!answer.empty()) {
    const std::size_t end = std::min(answer.find('\n'), answer.size());
    std::string_view line = answer.substr(0, end);
    answer.remove_prefix(std::min(end + 1, answer.size()));
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos ||
        base::lowerCase(line.substr(0, colon)) != name) {
      continue;
    }
    return base::trimmed(line.substr(colon + 1));
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
  const std::string name = base::lowerCase(header(answer, "usn"));
  if (!uuid.empty() && name.find(base::lowerCase(uuid)) == std::string::npos) {
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
  const auto port = base::parseNumber<std::uint16_t>(digits);
  return port == 0 ? std::nullopt : port;
}

}  // namespace local
