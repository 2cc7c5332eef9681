#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "suite/base/result.h"
#include "suite/connection/settings/address.h"
#include "suite/connection/settings/settings.h"

namespace connection {

/// What the command line says about the target.
struct TargetChoice {
  std::string text;      ///< A name from the settings, or an address; empty:
                         ///< this machine.
  TargetSettings given;  ///< By options.
  bool passwordFromStdin = false;
};

/// Where a password may come from, apart from the environment and the prompt.
struct PasswordSources {
  std::string optionFile;  ///< Named on the command line; or empty.
  bool standardInput = false;
  std::string settingsFile;  ///< Named in the settings; or empty.
};

/// A target with all that its connection needs, merged from every source.
struct Target {
  Address address;
  std::string name;      ///< In the settings; empty: it has none there.
  std::string notNamed;  ///< "'x' is no target in FILE (a, b)", if the settings
                         ///< name targets and the address is none of them.
  std::string similarName;  ///< The most similar one of them; empty: none.
  std::string user;         ///< Empty: no login.
  PasswordSources password;
  std::string caFile;  ///< Empty: the system's authorities.
  std::string pin;     ///< Empty: none.
  bool insecure = false;
  std::string certificate;  ///< Digest of the one to trust; empty: any.
  bool plainHttp = false;   ///< http:// is allowed beyond this machine.
  std::chrono::milliseconds timeout{30000};
  std::chrono::milliseconds deadline{120000};
  int maxConnections = 4;
  int ipmiPort = 623;
  bool thorough = false;
};

/// The target of a run. What the command line says goes before the target's
/// own table in the settings, and that before the defaults there. A password
/// file of the settings counts only for the user that its table names, or for
/// any where it names none, so that no account is tried with another's
/// password. Returns nullopt for this machine itself, where the settings name
/// no source for it, and a failure of kind `kUsage` if the choice cannot be
/// served.
base::Result<std::optional<Target>> resolveTarget(const TargetChoice& choice,
                                                  const Settings& settings);

/// How a controller that this machine finds by itself is to be treated: a
/// target without an address, put together likewise from the command line,
/// [inband] and the defaults.
Target controllerTarget(const TargetChoice& choice, const Settings& settings);

}  // namespace connection
