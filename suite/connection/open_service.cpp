#include "suite/connection/open_service.h"

#include <utility>

#include "suite/connection/transport_of.h"

namespace connection {
bool needsPassword(const Target& target) {
  return target.address.scheme != Address::Scheme::kDirectory &&
         !target.user.empty();
}

std::unique_ptr<redfish::Service> openService(const Target& target,
                                              const OpenOptions& how) {
  redfish::ServiceOptions options;
  if (how.password != nullptr) {
    options.user = target.user;
    options.password = base::Secret(*how.password);
  }
  options.gate = how.gate;
  options.progress = how.progress;
  options.readingBytes = how.readingBytes;
  options.maxConnections = target.maxConnections;
  options.requestTimeout = target.timeout;
  options.callTimeout = target.deadline;
  options.deadline = base::Clock::now() + target.deadline;
  options.prefetch =
      how.wants | (target.thorough ? redfish::kWantThorough : 0U);
  options.lan.host = target.address.host;
  options.lan.port = static_cast<std::uint16_t>(target.ipmiPort);
  std::unique_ptr<http::Transport> transport = transportOf(target);
  if (how.recording != nullptr) {
    transport = how.recording->recorded(std::move(transport));
    how.recording->noteName(target.address.host);
    how.recording->noteLogin(target.user, options.password);
  }
  return std::make_unique<redfish::Service>(std::move(options),
                                            std::move(transport));
}

}  // namespace connection
