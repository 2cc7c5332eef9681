#pragma once

#include <optional>
#include <string>

#include "suite/base/failure.h"
#include "suite/base/secret.h"
#include "suite/connection/settings/target.h"

namespace connection {

/// A password, and where it came from in words that may be logged.
struct Credential {
  base::Secret password;
  std::string origin;
};

/// The password of a target's user, from the first source that is given: the
/// file named on the command line, standard input, the environment's password,
/// the file named in the settings, the person at the terminal. Nothing, and
/// what is wrong in `failure`, when that source gives none.
std::optional<Credential> findCredential(
    const Target& target, std::optional<base::Secret> environment,
    base::Failure& failure);

}  // namespace connection
