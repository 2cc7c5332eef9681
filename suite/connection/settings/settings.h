#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "suite/base/result.h"
#include "suite/connection/settings/address.h"

namespace connection {

/// How a target is to be treated, as far as one source says so: the command
/// line, the target's own table in the settings, or the defaults there.
struct TargetSettings {
  std::optional<std::string> user;
  std::optional<std::string> passwordFile;
  std::optional<std::string> caFile;  ///< Authorities to trust, PEM.
  std::optional<std::string> pin;     ///< "sha256//..." of the public key.
  std::optional<bool> insecure;       ///< Trust any certificate.
  std::optional<bool> plainHttp;      ///< Allow http:// beyond this machine.
  std::optional<std::chrono::milliseconds> timeout;   ///< Of one request.
  std::optional<std::chrono::milliseconds> deadline;  ///< Of the whole run.
  std::optional<int> maxConnections;                  ///< 1 to 16.
  std::optional<int> ipmiPort;   ///< UDP port of IPMI over LAN.
  std::optional<bool> thorough;  ///< Read past healthy roll-ups.
};

/// The first source's values, and the second's where the first has none.
TargetSettings overlay(const TargetSettings& first,
                       const TargetSettings& second);

/// A target that the settings name.
struct NamedTarget {
  Address address;
  TargetSettings settings;
};

/// How this machine itself is read when no target is named.
struct InBandSettings {
  /// What is asked in the place of the machine's own controllers.
  std::optional<Address> source;
  /// For the source, or for the controllers that the machine finds.
  TargetSettings settings;
  /// Let a controller make an account, where no user is named.
  bool bootstrapCredentials = false;
  /// Names of PCI devices; empty: where systems keep them.
  std::string pciIdsFile;
};

/// The name of a log that stands for none.
inline constexpr std::string_view kNoLog = "none";

/// The settings file, read.
struct Settings {
  std::string file;  ///< Empty: there is none.
  TargetSettings defaults;
  std::map<std::string, NamedTarget, std::less<>> targets;
  /// Groups by name, each with the names of its targets, none twice.
  std::map<std::string, std::vector<std::string>, std::less<>> groups;
  InBandSettings inband;
  std::optional<std::string> logFile;  ///< A path, or `kNoLog`.
  std::optional<int> logLevel;         ///< 0 to 4.
};

/// The names of the targets of a group, which live as long as the settings.
/// Fails if the settings name no such group.
base::Result<const std::vector<std::string>*> findGroup(
    const Settings& settings, const std::string& name);

/// Reads a settings file (TOML 1.0). Paths in it may begin with "~/", which is
/// `home`, and are otherwise relative to the file's directory. Returns a
/// failure of kind `kUsage` if the file cannot be read or anything in it is
/// not understood; its cause names file, line and key, and repeats no value.
base::Result<Settings> loadSettings(const std::string& file,
                                    const std::string& home);

/// The same for the text of a settings file; `file` is its name in messages,
/// and its directory that of relative paths.
base::Result<Settings> readSettings(std::string_view text,
                                    const std::string& file,
                                    const std::string& home);

}  // namespace connection
