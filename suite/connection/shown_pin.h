#pragma once

#include <string>

#include "suite/base/result.h"
#include "suite/connection/settings/target.h"

namespace connection {

/// The pin of the key that a target shows now ("sha256//BASE64"). Asks for the
/// service root alone, without a user, and verifies nothing: it is the key of
/// whoever answers at the address. Fails if there is no TLS connection.
base::Result<std::string> readShownPin(const Target& target);

}  // namespace connection
