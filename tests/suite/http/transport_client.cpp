#include "tests/suite/http/transport_client.h"

#include <stdexcept>
#include <utility>

#include "tests/suite/http/scripted_server.h"

namespace {

constexpr std::chrono::seconds kPatience(10);

}  // namespace

http::NetworkTransportOptions plainOptions(std::uint16_t port) {
  http::NetworkTransportOptions options;
  options.origin = {"127.0.0.1", port, true};
  return options;
}

http::NetworkTransportOptions tlsOptions(std::uint16_t port) {
  http::NetworkTransportOptions options;
  options.origin = {"127.0.0.1", port, false};
  return options;
}

http::Request get(std::string target) {
  http::Request request;
  request.target = std::move(target);
  return request;
}

http::Answer ask(http::Transport& transport, http::Request request) {
  transport.start(std::move(request));
  return nextAnswer(transport);
}

http::Answer nextAnswer(http::Transport& transport) {
  std::optional<http::Answer> answer =
      transport.next(base::Clock::now() + kPatience);
  if (!answer) {
    throw std::runtime_error("no answer in time");
  }
  return std::move(*answer);
}

std::string told(const http::Answer& answer) {
  return answer.failure ? answer.failure->cause : "no failure";
}

std::string kindOf(const http::Answer& answer) {
  if (!answer.failure) {
    return "none";
  }
  switch (answer.failure->kind) {
    case base::FailureKind::kNameNotResolved:
      return "name";
    case base::FailureKind::kUnreachable:
      return "unreachable";
    case base::FailureKind::kConnectTimeout:
      return "connect timeout";
    case base::FailureKind::kReadTimeout:
      return "read timeout";
    case base::FailureKind::kBadContent:
      return "content";
    case base::FailureKind::kNotRedfish:
      return "no redfish";
    case base::FailureKind::kTls:
      return "tls";
    case base::FailureKind::kCertificate:
      return "certificate";
    default:
      return "other";
  }
}

http::Answer answerTo(std::string_view text, http::Request request) {
  ScriptedServer server([text](Peer& peer) {
    peer.readRequest();
    if (peer.write(text)) {
      peer.close();
    }
  });
  return ask(*http::makeNetworkTransport(plainOptions(server.port())),
             std::move(request));
}
