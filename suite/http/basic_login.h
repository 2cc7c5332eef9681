#pragma once

#include <string_view>

#include "suite/base/secret.h"

namespace http {

/// User and password as HTTP Basic sends them (RFC 7617): in base 64, without
/// the padding, which a service that repeats them may leave out.
base::Secret basicLogin(std::string_view user, const base::Secret& password);

}  // namespace http
