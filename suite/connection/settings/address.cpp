#include "suite/connection/settings/address.h"

#include <algorithm>
#include <boost/url/ipv4_address.hpp>
#include <boost/url/ipv6_address.hpp>
#include <cstddef>
#include <iterator>
#include <optional>
#include <utility>

#include "suite/base/ascii.h"
#include "suite/base/host_name.h"
#include "suite/base/numbers.h"

namespace connection {
namespace {

constexpr std::string_view kHttpsPrefix = "https://";
constexpr std::string_view kHttpPrefix = "http://";
constexpr std::string_view kFilePrefix = "file:";

bool isControl(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

std::string inQuotes(std::string_view text) {
  std::string shown = "'";
  std::transform(text.begin(), text.end(), std::back_inserter(shown),
                 [](char c) { return isControl(c) ? '?' : c; });
  return shown + "'";
}

// Reads "fe80::1", "fe80::1%eth0" or "fe80::1%25eth0" (RFC 6874).
std::optional<std::string> readIpv6(std::string_view literal) {
  const std::size_t percent = literal.find('%');
  std::string host(literal.substr(0, percent));
  if (!base::isIpv6Address(host)) {
    return std::nullopt;
  }
  if (percent == std::string_view::npos) {
    return host;
  }
  std::string_view zone = literal.substr(percent + 1);
  if (base::startsWith(zone, "25") && zone.size() > 2) {
    zone.remove_prefix(2);
  }
  const bool sound =
      !zone.empty() && std::all_of(zone.begin(), zone.end(), [](char c) {
        return base::isAlphanumeric(c) || c == '.' || c == '-' || c == '_';
      });
  return sound ? std::optional(host + "%" + std::string(zone)) : std::nullopt;
}

bool readPort(std::string_view text, std::uint16_t& port) {
  const auto number = base::parseNumber<std::uint16_t>(text);
  port = number.value_or(0);
  return port != 0;
}

// Reads "host", "host:port", "[address]" or "[address]:port".
// What is wrong with it; empty if nothing is.
std::string readHostAndPort(std::string_view text, Address& address) {
  std::string_view rest;
  if (base::startsWith(text, "[")) {
    const std::size_t bracket = text.find(']');
    const auto literal = bracket == std::string_view::npos
                             ? std::nullopt
                             : readIpv6(text.substr(1, bracket - 1));
    if (!literal) {
      return inQuotes(text) + " holds no IPv6 address between its brackets";
    }
    address.host = *literal;
    rest = text.substr(bracket + 1);
  } else {
    if (std::count(text.begin(), text.end(), ':') > 1) {
      return inQuotes(text) + " is not understood; an IPv6 address stands in " +
             "brackets, as in [fe80::1] or [fe80::1]:8443";
    }
    const std::size_t colon = std::min(text.find(':'), text.size());
    address.host = text.substr(0, colon);
    rest = text.substr(colon);
    if (!base::isHostName(address.host)) {
      return address.host.empty()
                 ? "no host is named"
                 : inQuotes(address.host) + " is no host name or address";
    }
  }
  const bool sound = rest.empty() || (rest.front() == ':' &&
                                      readPort(rest.substr(1), address.port));
  return sound ? ""
               : inQuotes(rest) + " behind the host is no port from 1 to 65535";
}

base::Result<Address> readDirectory(std::string_view directory) {
  if (directory.empty() || directory.find('\0') != std::string_view::npos) {
    return base::usageFailure("no directory is named; write file:DIR");
  }
  Address address;
  address.scheme = Address::Scheme::kDirectory;
  // file:///dir is the same place as file:/dir (RFC 8089, appendix B).
  address.directory =
      directory.substr(base::startsWith(directory, "///") ? 2 : 0);
  return address;
}

void dropServicePath(std::string_view& text) {
  const std::size_t slash = std::min(text.find('/'), text.size());
  const std::string_view path = text.substr(slash);
  if (path == "/" || path == "/redfish/v1" || path == "/redfish/v1/") {
    text.remove_suffix(path.size());
  }
}

}  // namespace

base::Result<Address> parseAddress(std::string_view text) {
  if (base::startsWith(text, kFilePrefix)) {
    return readDirectory(text.substr(kFilePrefix.size()));
  }
  Address address;
  std::string_view rest = text;
  if (base::startsIgnoringCase(rest, kHttpsPrefix)) {
    rest.remove_prefix(kHttpsPrefix.size());
  } else if (base::startsIgnoringCase(rest, kHttpPrefix)) {
    rest.remove_prefix(kHttpPrefix.size());
    address.scheme = Address::Scheme::kHttp;
  }
  // The last "@" ends the user's name, which may hold others.
  const std::size_t at = rest.rfind('@');
  if (at != std::string_view::npos) {
    address.user = rest.substr(0, at);
    if (address.user.find(':') != std::string::npos) {
      return base::usageFailure(
          "a password in the address would be seen by every user of this "
          "machine; leave it out, and give it by --password-file, "
          "--password-stdin, BRIVEL_PASSWORD or at the prompt");
    }
    if (address.user.empty() ||
        std::any_of(address.user.begin(), address.user.end(), isControl)) {
      return base::usageFailure(
          "the user's name before '@' is empty or holds control characters");
    }
    rest.remove_prefix(at + 1);
  }
  if (rest.find("://") != std::string_view::npos) {
    return base::usageFailure(inQuotes(rest) +
                              " is neither https:// nor file:");
  }
  dropServicePath(rest);
  if (rest.find('/') != std::string_view::npos) {
    return base::usageFailure(
        inQuotes(rest) +
        " holds a path; name the host alone, or file:DIR for a recorded "
        "server");
  }
  std::string problem = readHostAndPort(rest, address);
  if (!problem.empty()) {
    return base::usageFailure(std::move(problem));
  }
  return address;
}

bool isLoopback(const Address& address) {
  if (address.host == "localhost") {
    return true;
  }
  if (const auto four = boost::urls::parse_ipv4_address(address.host)) {
    return four->is_loopback();
  }
  const auto six = boost::urls::parse_ipv6_address(address.host);
  return six && six->is_loopback();
}

http::Origin originOf(const Address& address) {
  return {address.host, address.port, address.scheme == Address::Scheme::kHttp};
}

std::string toString(const Address& address) {
  return address.scheme == Address::Scheme::kDirectory
             ? std::string(kFilePrefix) + address.directory
             : http::addressOf(originOf(address));
}

}  // namespace connection
