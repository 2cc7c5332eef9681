#pragma once

#include <optional>
#include <string>

#include "suite/base/result.h"
#include "suite/base/secret.h"
#include "suite/connection/settings/target.h"

namespace connection {

/// A password, and its origin as a text that may be logged.
struct Credential {
  base::Secret password;
  std::string origin;
};

/// Whether `findCredential` would ask the person at the terminal.
bool asksPerson(const Target& target, bool inEnvironment);

/// Finds the password of a target's user in the first source that is given:
/// the file named on the command line, standard input, the environment's
/// password, the file named in the settings, the person at the terminal. Later
/// sources are not asked if that one fails.
base::Result<Credential> findCredential(
    const Target& target, std::optional<base::Secret> environment);

}  // namespace connection
