#include "suite/redfish/session/redirect.h"

#include "suite/base/ascii.h"
#include "suite/redfish/graph/uri.h"

namespace redfish {
namespace {

// Whether an authority is the address "host:port"; without a port it stands
// for the scheme's own.
bool sameAuthority(std::string_view authority, std::string_view scheme,
                   std::string_view address) {
  if (base::equalIgnoringCase(authority, address)) {
    return true;
  }
  const std::string_view defaultPort = scheme == "http" ? ":80" : ":443";
  std::string withPort(authority);
  withPort += defaultPort;
  return base::equalIgnoringCase(withPort, address);
}

}  // namespace

std::optional<std::string> redirectTarget(std::string_view location,
                                          std::string_view address) {
  for (const std::string_view scheme : {"https", "http"}) {
    const std::size_t length = scheme.size();
    if (location.size() > length + 3 &&
        base::equalIgnoringCase(location.substr(0, length), scheme) &&
        location.substr(length, 3) == "://") {
      const std::string_view rest = location.substr(length + 3);
      const std::string_view authority = rest.substr(0, rest.find('/'));
      if (!sameAuthority(authority, scheme, address)) {
        return std::nullopt;
      }
      location = rest.substr(authority.size());
      break;
    }
  }
  // "//host/path" names another origin without saying so.
  if (location.substr(0, 2) == "//") {
    return std::nullopt;
  }
  const auto uri = Uri::parse(location);
  if (!uri) {
    return std::nullopt;
  }
  return uri->target();
}

}  // namespace redfish
