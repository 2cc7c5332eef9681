#include "suite/connection/transport_of.h"

#include <algorithm>
#include <utility>

#include "suite/http/network_transport.h"
#include "suite/redfish/recorded/directory_transport.h"

namespace connection {

std::unique_ptr<http::Transport> transportOf(const Target& target) {
  if (target.address.scheme == Address::Scheme::kDirectory) {
    return redfish::makeDirectoryTransport(target.address.directory);
  }
  http::NetworkTransportOptions options;
  options.origin = originOf(target.address);
  options.connectTimeout = std::min(options.connectTimeout, target.timeout);
  options.maxConnections = target.maxConnections;
  options.caFile = target.caFile;
  options.pin = target.pin;
  options.insecure = target.insecure;
  options.certificate = target.certificate;
  return http::makeNetworkTransport(std::move(options));
}

}  // namespace connection
