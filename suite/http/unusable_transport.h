#pragma once

#include <memory>

#include "suite/base/failure.h"
#include "suite/http/origin.h"
#include "suite/http/transport.h"

namespace http {

/// A transport that sends nothing: every request to `origin` fails at once
/// with `failure`, whose address and URI are filled in. For a network that
/// this installation cannot use.
std::unique_ptr<Transport> makeUnusableTransport(const Origin& origin,
                                                 base::Failure failure);

}  // namespace http
