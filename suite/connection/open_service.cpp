#include "suite/connection/open_service.h"

#include <utility>

#include "suite/connection/transport_of.h"

namespace connection {
bool needsPassword(const Target& target) {
  return target.address.scheme != Address::Scheme::kDirectory &&
         !target.user.empty();
}

std::unique_ptr<redfish::Service> openService(const Target& target,
                                              const base::Secret* password,
                                              std::uint32_t wants,
                                              redfish::LoginGate* gate,
                                              RunRecording* recording) {
  redfish::ServiceOptions options;
  if (password != nullptr) {
    options.user = target.user;
    options.password = base::Secret(*password);
  }
  options.gate = gate;
  options.maxConnections = target.maxConnections;
  options.requestTimeout = target.timeout;
  options.callTimeout = target.deadline;
  options.deadline = base::Clock::now() + target.deadline;
  options.prefetch = wants | (target.thorough ? redfish::kWantThorough : 0U);
  options.lan.host = target.address.host;
  options.lan.port = static_cast<std::uint16_t>(target.ipmiPort);
  std::unique_ptr<http::Transport> transport = transportOf(target);
  if (recording != nullptr) {
    transport = recording->recorded(std::move(transport));
    recording->noteName(target.user);
    recording->noteName(target.address.host);
    recording->noteSecret(options.password);
  }
  return std::make_unique<redfish::Service>(std::move(options),
                                            std::move(transport));
}

}  // namespace connection
