#include "suite/base/host_name.h"

#include <algorithm>
#include <boost/url/ipv4_address.hpp>
#include <boost/url/ipv6_address.hpp>

#include "suite/base/ascii.h"

namespace base {

bool isIpv4Address(std::string_view text) {
  return boost::urls::parse_ipv4_address(text).has_value();
}

bool isIpv6Address(std::string_view text) {
  return boost::urls::parse_ipv6_address(text).has_value();
}

bool isLinkLocal(std::string_view host) {
  return startsIgnoringCase(host, "fe80") && isIpv6Host(host);
}

bool isHostName(std::string_view text) {
  if (text.empty() || text.size() > kLongestHostName || text.front() == '.' ||
      text.front() == '-' || text.find("..") != std::string_view::npos) {
    return false;
  }
  const bool numeric =
      text.find_first_not_of("0123456789.") == std::string_view::npos;
  return numeric
             ? isIpv4Address(text)
             : std::all_of(text.begin(), text.end(), [](char c) {
                 return isAlphanumeric(c) || c == '.' || c == '-' || c == '_';
               });
}

std::string bracketed(std::string_view host) {
  const std::string text(host);
  return isIpv6Host(host) ? '[' + text + ']' : text;
}

}  // namespace base
