#pragma once

#include <string>

namespace platform {

// Where a user's own files are (XDG Base Directory Specification 0.8: values
// that are not absolute count as unset). Where the environment leads root to a
// folder of another user it counts as unset, too.

/// The user's home: HOME, else what the system's user database says; empty
/// when neither tells.
std::string homeDirectory();

/// The settings file of a run that names none: the user's own
/// (XDG_CONFIG_HOME, else ~/.config, then brivel/brivel.toml) if it is there,
/// else /etc/brivel/brivel.toml if that is; else empty.
std::string settingsFile();

/// The log of a run that names none: XDG_STATE_HOME, else ~/.local/state, then
/// brivel/brivel.log; empty without a home.
std::string logFile();

/// How messages call the user's own settings file.
const char* userSettingsPath();

}  // namespace platform
