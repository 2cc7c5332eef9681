#pragma once

#include <chrono>
#include <string>

#include "suite/base/failure.h"

namespace http {

/// How a request over the network fails, the same for all libraries. Faults of
/// certificates are in certificate_fault.h.
enum class NetworkFault {
  kNoHostName,  ///< The host is neither a name nor an address.
  kHostNotFound,
  kRefused,
  kNoRoute,
  kNoAnswerToConnect,  ///< The system stopped trying to connect.
  kNotConnected,
  kQueueTimeout,    ///< No connection became free.
  kNameTimeout,     ///< The name was not resolved.
  kConnectTimeout,  ///< No TCP connection.
  kTlsTimeout,      ///< TCP, but no end of the handshake.
  kAnswerTimeout,   ///< Sent, but no whole answer.
  kNoTls,
  kOldTls,
  kLostInHandshake,
  kTlsHandshake,
  kLostBeforeAnswer,
  kLostInAnswer,
  kNotHttp,
  kHeadersTooLarge,
  kBodyTooLarge,
  kBodiesTooLarge,  ///< Together with the others that are under way.
  kBadEncoding,
  kOtherEncoding,  ///< Compressed more than once, or not as asked for.
  kMalformed,
  kInternal
};

/// The time limits of a request.
struct NetworkTimes {
  std::chrono::milliseconds connect{0};  ///< Name, TCP and TLS together.
  std::chrono::milliseconds whole{0};
};

/// The failure with cause and remedy; address and URI are left empty. `detail`
/// is the library's message as clean text, which only the less specific faults
/// include.
base::Failure failureOf(NetworkFault fault, const std::string& detail,
                        const NetworkTimes& times = {});

}  // namespace http
