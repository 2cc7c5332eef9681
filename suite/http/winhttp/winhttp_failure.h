#pragma once

#include "suite/http/network_fault.h"

namespace http {

/// How far a request had come.
struct WinhttpProgress {
  bool resolved = false;   ///< The name had an address.
  bool connected = false;  ///< TCP was established.
  bool sent = false;       ///< The request was on its way.
  bool answered = false;   ///< The headers of an answer had come.
};

/// What an error of WinHTTP or of the sockets below it means.
NetworkFault faultOf(unsigned long error, const WinhttpProgress& progress);

/// What ran out when a request was not through in time.
NetworkFault timeoutFaultOf(const WinhttpProgress& progress);

/// What the system says about an error, as clean text.
std::string messageFor(unsigned long error);

}  // namespace http
