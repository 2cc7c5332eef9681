#pragma once

#include <string>

#include "suite/base/result.h"
#include "suite/connection/settings/target.h"

namespace connection {

/// The pin of the key that a target shows now ("sha256//BASE64"). Nothing is
/// trusted, no user is named, and nothing but the service root is asked for:
/// whoever answers at the address is seen, whatever the answer says. Fails if
/// no TLS connection comes about, or the target is not asked over TLS.
base::Result<std::string> readShownPin(const Target& target);

}  // namespace connection
