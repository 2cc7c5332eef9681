#include "suite/http/origin.h"

#include <algorithm>
#include <string_view>

#include "suite/base/ascii.h"
#include "suite/base/host_name.h"
#include "suite/base/text.h"

namespace http {
namespace {

constexpr std::uint16_t kHttpPort = 80;
constexpr std::uint16_t kHttpsPort = 443;
constexpr std::size_t kMaxHostBytes = 255;

std::uint16_t portOf(const Origin& origin) {
  if (origin.port != 0) {
    return origin.port;
  }
  return origin.plainHttp ? kHttpPort : kHttpsPort;
}

// Whether each character is a letter, a digit, or one of `others`; letters of
// other scripts (internationalised names) count as letters.
bool consistsOf(std::string_view text, std::string_view others) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [&](char c) {
    return base::isAlphanumeric(c) || static_cast<unsigned char>(c) >= 0x80 ||
           others.find(c) != std::string_view::npos;
  });
}

}  // namespace

std::string addressOf(const Origin& origin) {
  return base::bracketed(base::cleanText(origin.host)) + ':' +
         std::to_string(portOf(origin));
}

std::optional<std::string> urlOf(const Origin& origin) {
  const std::string_view host = origin.host;
  if (host.size() > kMaxHostBytes) {
    return std::nullopt;
  }
  std::string url = origin.plainHttp ? "http://" : "https://";
  if (base::isIpv6Host(host)) {
    const std::string_view address = host.substr(0, host.find('%'));
    if (!consistsOf(address, ":.")) {
      return std::nullopt;
    }
    url.append("[").append(address);
    if (address.size() < host.size()) {
      const std::string_view zone = host.substr(address.size() + 1);
      if (!consistsOf(zone, "-._~")) {
        return std::nullopt;
      }
      url.append("%25").append(zone);
    }
    url += ']';
  } else {
    if (!consistsOf(host, "-._")) {
      return std::nullopt;
    }
    url += host;
  }
  return url + ':' + std::to_string(portOf(origin));
}

}  // namespace http
