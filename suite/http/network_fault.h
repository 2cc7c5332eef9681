#pragma once

#include <chrono>
#include <string>

#include "suite/base/failure.h"

namespace http {

/// How a request over the network fails, whatever the library says; what is
/// wrong with a certificate stands in certificate_fault.h.
enum class NetworkFault {
  kNoHostName,  ///< What should be a host is neither name nor address.
  kHostNotFound,
  kRefused,
  kNoRoute,
  kNoAnswerToConnect,  ///< The system itself gave up.
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

/// The time limits that a request was under.
struct NetworkTimes {
  std::chrono::milliseconds connect{0};  ///< Name, TCP and TLS together.
  std::chrono::milliseconds whole{0};
};

/// The failure in words that a person can act on; address and URI are left
/// empty. `detail` is what the library says, as clean text; it is told for the
/// faults whose own words do not say enough.
base::Failure failureOf(NetworkFault fault, const std::string& detail,
                        const NetworkTimes& times = {});

}  // namespace http
