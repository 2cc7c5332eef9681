#include "suite/http/network_fault.h"

#include <algorithm>
#include <utility>

namespace http {
namespace {

// What a failure says: the cause, with the detail or a time limit behind it.
struct Words {
  enum class Tail { kNone, kDetail, kConnectTime, kWholeTime };

  base::FailureKind kind;
  const char* cause;
  Tail tail;
  const char* remedy;
};

constexpr char kPatience[] = "check the controller, or allow more time";
constexpr char kFirewall[] =
    "check the address, and that no firewall drops packets";
constexpr char kFirmware[] = "check the controller's firmware";
constexpr char kAddress[] = "check the address and the network";

Words messageFor(NetworkFault fault) {
  using Kind = base::FailureKind;
  using Tail = Words::Tail;
  switch (fault) {
    case NetworkFault::kNoHostName:
      return {Kind::kNameNotResolved,
              "this is neither a host name nor an address", Tail::kNone,
              "check its spelling"};
    case NetworkFault::kHostNotFound:
      return {Kind::kNameNotResolved, "the host name cannot be resolved",
              Tail::kNone, "check its spelling and the name server"};
    case NetworkFault::kRefused:
      return {Kind::kUnreachable, "the connection was refused", Tail::kNone,
              "check the port, and that the Redfish service is switched on"};
    case NetworkFault::kNoRoute:
      return {Kind::kUnreachable, "there is no way to this address",
              Tail::kNone, kAddress};
    case NetworkFault::kNoAnswerToConnect:
      return {Kind::kConnectTimeout, "no connection came about", Tail::kNone,
              kFirewall};
    case NetworkFault::kNotConnected:
      return {Kind::kUnreachable, "no connection came about", Tail::kDetail,
              kAddress};
    case NetworkFault::kQueueTimeout:
      return {Kind::kReadTimeout, "no connection became free within ",
              Tail::kWholeTime, kPatience};
    case NetworkFault::kNameTimeout:
      return {Kind::kConnectTimeout, "the host name was not resolved within ",
              Tail::kConnectTime, "check the name server"};
    case NetworkFault::kConnectTimeout:
      return {Kind::kConnectTimeout, "no connection within ",
              Tail::kConnectTime, kFirewall};
    case NetworkFault::kTlsTimeout:
      return {Kind::kConnectTimeout, "the TLS handshake did not end within ",
              Tail::kConnectTime, kPatience};
    case NetworkFault::kAnswerTimeout:
      return {Kind::kReadTimeout, "no whole answer within ", Tail::kWholeTime,
              kPatience};
    case NetworkFault::kNoTls:
      return {Kind::kTls, "the port does not speak TLS", Tail::kNone,
              "check the port: this may be plain HTTP"};
    case NetworkFault::kOldTls:
      return {Kind::kTls, "the server offers no TLS version from 1.2 on",
              Tail::kNone, "update the controller's firmware"};
    case NetworkFault::kLostInHandshake:
      return {Kind::kTls, "the connection ended in the TLS handshake",
              Tail::kNone, "check the port, and the controller"};
    case NetworkFault::kTlsHandshake:
      return {Kind::kTls, "the TLS handshake failed", Tail::kDetail,
              "check the port and the controller's TLS settings"};
    case NetworkFault::kLostBeforeAnswer:
      return {Kind::kUnreachable, "the connection ended before an answer",
              Tail::kDetail,
              "check the controller, and that the port is the right one"};
    case NetworkFault::kLostInAnswer:
      return {Kind::kBadContent, "the connection ended in mid-answer",
              Tail::kNone, "check the controller"};
    case NetworkFault::kNotHttp:
      return {Kind::kNotRedfish, "the answer is not HTTP", Tail::kNone,
              "check the port: it may want HTTPS"};
    case NetworkFault::kHeadersTooLarge:
      return {Kind::kBadContent,
              "the headers of the answer are larger than 64 KiB", Tail::kNone,
              kFirmware};
    case NetworkFault::kBodyTooLarge:
      return {Kind::kBadContent, "the answer is larger than 16 MiB",
              Tail::kNone, kFirmware};
    case NetworkFault::kBodiesTooLarge:
      return {Kind::kBadContent,
              "the answers that came together are larger than 24 MiB",
              Tail::kNone, "use --max-connections 1"};
    case NetworkFault::kBadEncoding:
      return {Kind::kBadContent, "the answer is not compressed as it says",
              Tail::kNone, kFirmware};
    case NetworkFault::kOtherEncoding:
      return {Kind::kBadContent,
              "the answer is compressed more than once, or not by gzip",
              Tail::kNone, kFirmware};
    case NetworkFault::kMalformed:
      return {Kind::kBadContent, "the answer is malformed", Tail::kDetail,
              kFirmware};
    case NetworkFault::kInternal:
      break;
  }
  return {Kind::kInternal, "the network cannot be used", Tail::kDetail, ""};
}

std::string seconds(std::chrono::milliseconds time) {
  const auto count = time.count();
  std::string text = std::to_string(count / 1000);
  if (count % 1000 != 0) {
    text += '.' + std::to_string(count % 1000 / 100);
  }
  return text + " s";
}

}  // namespace

base::Failure failureOf(NetworkFault fault, const std::string& detail,
                        const NetworkTimes& times) {
  const Words words = messageFor(fault);
  std::string cause = words.cause;
  switch (words.tail) {
    case Words::Tail::kNone:
      break;
    case Words::Tail::kDetail:
      cause += " (" + detail + ')';
      break;
    case Words::Tail::kConnectTime:
      cause += seconds(std::min(times.connect, times.whole));
      break;
    case Words::Tail::kWholeTime:
      cause += seconds(times.whole);
      break;
  }
  return {words.kind, "", "", std::move(cause), words.remedy};
}

}  // namespace http
