#include "tests/suite/redfish/transport_client.h"

#include <stdexcept>
#include <utility>

#include "tests/suite/redfish/scripted_server.h"

namespace {

constexpr std::chrono::seconds kPatience(10);

}  // namespace

redfish::NetworkTransportOptions plainOptions(std::uint16_t port) {
  redfish::NetworkTransportOptions options;
  options.origin = {"127.0.0.1", port, true};
  return options;
}

redfish::NetworkTransportOptions tlsOptions(std::uint16_t port) {
  redfish::NetworkTransportOptions options;
  options.origin = {"127.0.0.1", port, false};
  return options;
}

redfish::Request get(std::string target) {
  redfish::Request request;
  request.target = std::move(target);
  return request;
}

redfish::Answer ask(redfish::Transport& transport, redfish::Request request) {
  transport.start(std::move(request));
  return nextAnswer(transport);
}

redfish::Answer nextAnswer(redfish::Transport& transport) {
  std::optional<redfish::Answer> answer =
      transport.next(redfish::Clock::now() + kPatience);
  if (!answer) {
    throw std::runtime_error("no answer in time");
  }
  return std::move(*answer);
}

std::string told(const redfish::Answer& answer) {
  return answer.failure ? answer.failure->cause : "no failure";
}

std::string kindOf(const redfish::Answer& answer) {
  if (!answer.failure) {
    return "none";
  }
  switch (answer.failure->kind) {
    case redfish::FailureKind::kNameNotResolved:
      return "name";
    case redfish::FailureKind::kUnreachable:
      return "unreachable";
    case redfish::FailureKind::kConnectTimeout:
      return "connect timeout";
    case redfish::FailureKind::kReadTimeout:
      return "read timeout";
    case redfish::FailureKind::kBadContent:
      return "content";
    case redfish::FailureKind::kNotRedfish:
      return "no redfish";
    case redfish::FailureKind::kTls:
      return "tls";
    case redfish::FailureKind::kCertificate:
      return "certificate";
    default:
      return "other";
  }
}

redfish::Answer answerTo(std::string_view text, redfish::Request request) {
  ScriptedServer server([text](Peer& peer) {
    peer.readRequest();
    if (peer.write(text)) {
      peer.close();
    }
  });
  return ask(*redfish::makeNetworkTransport(plainOptions(server.port())),
             std::move(request));
}
