#pragma once

#include <cstdint>
#include <string>

#include "suite/http/transport.h"

namespace http {

/// Writes the outcome of a request to the log, at level 4: method, target,
/// status or cause, and the bytes of the body as they were sent.
void traceAnswer(const std::string& address, const Request& request,
                 const Answer& answer, std::uint64_t bytes);

}  // namespace http
