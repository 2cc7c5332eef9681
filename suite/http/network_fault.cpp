#include "suite/http/network_fault.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "suite/base/enum_table.h"
#include "suite/http/transport.h"

namespace http {
namespace {

// What a failure says: the cause, with the detail or a limit behind it.
enum class Tail {
  kNone,
  kDetail,
  kConnectTime,
  kWholeTime,
  kHeaderLimit,
  kBodyLimit,
  kHeldLimit
};

struct NetworkMessage {
  NetworkFault fault;
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

using Fault = NetworkFault;
using Kind = base::FailureKind;

// One row a fault, in the order of the enumeration.
// clang-format off
constexpr NetworkMessage kNetworkMessages[] = {
    {Fault::kNoHostName, Kind::kNameNotResolved, "this is neither a host name nor an address", Tail::kNone, "check its spelling"},
    {Fault::kHostNotFound, Kind::kNameNotResolved, "the host name cannot be resolved", Tail::kNone, "check its spelling and the name server"},
    {Fault::kRefused, Kind::kUnreachable, "the connection was refused", Tail::kNone, "check the port, and that the Redfish service is switched on"},
    {Fault::kNoRoute, Kind::kUnreachable, "there is no way to this address", Tail::kNone, kAddress},
    {Fault::kNoAnswerToConnect, Kind::kConnectTimeout, "no connection came about", Tail::kNone, kFirewall},
    {Fault::kNotConnected, Kind::kUnreachable, "no connection came about", Tail::kDetail, kAddress},
    {Fault::kQueueTimeout, Kind::kReadTimeout, "no connection became free within ", Tail::kWholeTime, kPatience},
    {Fault::kNameTimeout, Kind::kConnectTimeout, "the host name was not resolved within ", Tail::kConnectTime, "check the name server"},
    {Fault::kConnectTimeout, Kind::kConnectTimeout, "no connection within ", Tail::kConnectTime, kFirewall},
    {Fault::kTlsTimeout, Kind::kConnectTimeout, "the TLS handshake did not end within ", Tail::kConnectTime, kPatience},
    {Fault::kAnswerTimeout, Kind::kReadTimeout, "no whole answer within ", Tail::kWholeTime, kPatience},
    {Fault::kNoTls, Kind::kTls, "the port does not speak TLS", Tail::kNone, "check the port: this may be plain HTTP"},
    {Fault::kOldTls, Kind::kTls, "the server offers no TLS version from 1.2 on", Tail::kNone, "update the controller's firmware"},
    {Fault::kLostInHandshake, Kind::kTls, "the connection ended in the TLS handshake", Tail::kNone, "check the port, and the controller"},
    {Fault::kTlsHandshake, Kind::kTls, "the TLS handshake failed", Tail::kDetail, "check the port and the controller's TLS settings"},
    {Fault::kLostBeforeAnswer, Kind::kUnreachable, "the connection ended before an answer", Tail::kDetail, "check the controller, and that the port is the right one"},
    {Fault::kLostInAnswer, Kind::kBadContent, "the connection ended in mid-answer", Tail::kNone, "check the controller"},
    {Fault::kNotHttp, Kind::kNotRedfish, "the answer is not HTTP", Tail::kNone, "check the port: it may want HTTPS"},
    {Fault::kHeadersTooLarge, Kind::kBadContent, "the headers of the answer are larger than ", Tail::kHeaderLimit, kFirmware},
    {Fault::kBodyTooLarge, Kind::kBadContent, "the answer is larger than ", Tail::kBodyLimit, kFirmware},
    {Fault::kBodiesTooLarge, Kind::kBadContent, "the answers that came together are larger than ", Tail::kHeldLimit, "use --max-connections 1"},
    {Fault::kBadEncoding, Kind::kBadContent, "the answer is not compressed as it says", Tail::kNone, kFirmware},
    {Fault::kOtherEncoding, Kind::kBadContent, "the answer is compressed more than once, or not by gzip", Tail::kNone, kFirmware},
    {Fault::kMalformed, Kind::kBadContent, "the answer is malformed", Tail::kDetail, kFirmware},
    {Fault::kInternal, Kind::kInternal, "the network cannot be used", Tail::kDetail, ""},
};
// clang-format on

static_assert(base::hasRowForEach(kNetworkMessages, &NetworkMessage::fault,
                                  Fault::kInternal));

const NetworkMessage& messageFor(NetworkFault fault) {
  return kNetworkMessages[static_cast<std::size_t>(fault)];
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
  const NetworkMessage& message = messageFor(fault);
  std::string cause = message.cause;
  switch (message.tail) {
    case Tail::kNone:
      break;
    case Tail::kDetail:
      cause += " (" + detail + ')';
      break;
    case Tail::kConnectTime:
      cause += seconds(std::min(times.connect, times.whole));
      break;
    case Tail::kWholeTime:
      cause += seconds(times.whole);
      break;
    case Tail::kHeaderLimit:
      cause += std::to_string(kMaxHeaderBytes >> 10U) + " KiB";
      break;
    case Tail::kBodyLimit:
      cause += std::to_string(kMaxBodyBytes >> 20U) + " MiB";
      break;
    case Tail::kHeldLimit:
      cause += std::to_string(kMaxHeldBytes >> 20U) + " MiB";
      break;
  }
  return {message.kind, "", "", std::move(cause), message.remedy};
}

}  // namespace http
