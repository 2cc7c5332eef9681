#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "suite/connection/settings/address.h"
#include "suite/connection/settings/toml.h"

namespace connection {

/// What is wrong in a settings file, and where. Thrown by the functions below
/// and caught where the file is loaded.
struct SettingsMistake {
  std::uint32_t line = 0;
  std::string text;
};

/// One value of a settings file, and what its text may refer to.
struct SettingsValue {
  const toml::node& node;
  std::string_view table;        ///< Name of its table, "targets.rack1-n3".
  std::string_view key;          ///< Its name in the table.
  const std::string& directory;  ///< Where the settings file is.
  const std::string& home;       ///< The user's home; what "~/" stands for.
};

/// Throws the mistake that a value is: "'KEY' in [TABLE] " and `what`.
[[noreturn]] void reject(const SettingsValue& value, const std::string& what);

/// A text that is not empty.
std::string readText(const SettingsValue& value);

bool readFlag(const SettingsValue& value);

/// A whole number between two limits, both included.
int readNumber(const SettingsValue& value, int least, int most);

/// A time limit: a number of seconds, whole or not.
std::chrono::milliseconds readSeconds(const SettingsValue& value);

/// A path, made absolute as far as the settings file's own is.
std::string readPath(const SettingsValue& value);

/// A pinned public key.
std::string readPin(const SettingsValue& value);

/// An address; the directory of a recorded server is a path like any other.
Address readAddress(const SettingsValue& value);

}  // namespace connection
