#include "suite/connection/settings/settings.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

#include "suite/base/suggestion.h"
#include "suite/base/text.h"
#include "suite/connection/settings/groups.h"
#include "suite/connection/settings/settings_values.h"
#include "suite/connection/settings/values.h"
#include "suite/platform/files/trust.h"

namespace connection {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestFile = std::size_t{1} << 20U;

const std::vector<std::string> kTables = {"defaults", "targets", "groups",
                                          "inband"};

// What may help with a line that is no TOML: a text without quotation marks is
// the usual mistake. The value is not repeated; it may be a password.
std::string quotationHint(std::string_view text, std::uint32_t number) {
  for (; number > 1; --number) {
    text.remove_prefix(std::min(text.find('\n') + 1, text.size()));
  }
  const std::string_view line = text.substr(0, text.find('\n'));
  const std::size_t equals = line.find('=');
  if (equals == std::string_view::npos) {
    return "";
  }
  const std::size_t value = line.find_first_not_of(" \t", equals + 1);
  return value != std::string_view::npos &&
                 std::string_view("\"'[{#").find(line[value]) ==
                     std::string_view::npos
             ? "; a text stands in quotation marks: address = \"10.0.0.5\""
             : "";
}

// Dotted keys nest as deep as they have dots, and the library takes them apart
// by recursion.
constexpr std::ptrdiff_t kMostDots = 64;

// The first line that could nest too deep; nullopt if there is none. Lines of
// comment may be drawn of dots.
std::optional<std::size_t> overlyDottedLine(std::string_view text) {
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    const std::size_t begin = line.find_first_not_of(" \t");
    if (begin != std::string_view::npos && line[begin] != '#' &&
        std::count(line.begin(), line.end(), '.') > kMostDots) {
      return number;
    }
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return std::nullopt;
}

// Keys that a table may hold, each with what becomes of its value.
using Keys = std::vector<
    std::pair<std::string_view, std::function<void(const SettingsValue&)>>>;

Keys targetKeys(TargetSettings& target) {
  using Value = const SettingsValue&;
  // clang-format off
  return {
      {"user", [&](Value value) { target.user = readText(value); }},
      {"password-file", [&](Value value) { target.passwordFile = readPath(value); }},
      {"cacert", [&](Value value) { target.caFile = readPath(value); }},
      {"pin", [&](Value value) { target.pin = readPin(value); }},
      {"insecure", [&](Value value) { target.insecure = readFlag(value); }},
      {"plain-http", [&](Value value) { target.plainHttp = readFlag(value); }},
      {"timeout", [&](Value value) { target.timeout = readSeconds(value); }},
      {"deadline", [&](Value value) { target.deadline = readSeconds(value); }},
      {"max-connections", [&](Value value) { target.maxConnections = readNumber(value, 1, kMostConnections); }},
      {"ipmi-port", [&](Value value) { target.ipmiPort = readNumber(value, 1, kLargestPort); }},
      {"thorough", [&](Value value) { target.thorough = readFlag(value); }},
  };
  // clang-format on
}

// Reads one file; its life is the reading.
class SettingsReader {
 public:
  SettingsReader(const std::string& file, const std::string& home)
      : directory_(fs::path(file).parent_path().string()), home_(home) {
    settings_.file = file;
  }

  Settings read(const toml::table& root) {
    // The named targets come first: [groups] and [inband] refer to them.
    if (const toml::node* const targets = root.get("targets")) {
      readTargets(table(*targets, "targets"));
    }
    for (const auto& [key, node] : root) {
      if (key == "defaults") {
        readDefaults(table(node, "defaults"));
      } else if (key == "groups") {
        settings_.groups = readGroups(table(node, "groups"), targetNames());
      } else if (key == "inband") {
        readInband(table(node, "inband"));
      } else if (key != "targets") {
        throw SettingsMistake{key.source().begin.line,
                              "unknown table or key '" +
                                  std::string(key.str()) +
                                  "'; known tables are [defaults], "
                                  "[targets.NAME], [groups] and [inband]" +
                                  base::suggestionFor(key.str(), kTables)};
      }
    }
    return std::move(settings_);
  }

 private:
  static const toml::table& table(const toml::node& node,
                                  const std::string& name) {
    if (!node.is_table()) {
      throw SettingsMistake{node.source().begin.line,
                            "'" + name + "' must be a table: [" + name + "]"};
    }
    return *node.as_table();
  }

  void readKeys(const toml::table& entries, const std::string& name,
                const Keys& keys) const {
    for (const auto& [key, node] : entries) {
      const SettingsValue value{node, name, key.str(), directory_, home_};
      std::string known;
      std::vector<std::string> names;
      bool taken = false;
      for (const auto& [candidate, take] : keys) {
        if (candidate == key.str()) {
          take(value);
          taken = true;
        }
        names.emplace_back(candidate);
        known += (known.empty() ? "" : ", ") + names.back();
      }
      if (taken) {
        continue;
      }
      if (key.str() == "password") {
        reject(value,
               "does not belong here: put the password into a file that only "
               "you can read (chmod 600), and name that file by password-file");
      }
      throw SettingsMistake{key.source().begin.line,
                            "unknown key '" + std::string(key.str()) +
                                "' in [" + name + "]; known are " + known +
                                base::suggestionFor(key.str(), names)};
    }
  }

  void readDefaults(const toml::table& entries) {
    Keys keys = targetKeys(settings_.defaults);
    keys.emplace_back("log-file", [&](const SettingsValue& value) {
      settings_.logFile =
          readText(value) == kNoLog ? std::string(kNoLog) : readPath(value);
    });
    keys.emplace_back("log-level", [&](const SettingsValue& value) {
      settings_.logLevel = readNumber(value, 0, kHighestLogLevel);
    });
    readKeys(entries, "defaults", keys);
  }

  void readTargets(const toml::table& entries) {
    for (const auto& [key, node] : entries) {
      const std::string name = "targets." + std::string(key.str());
      const toml::table& target = table(node, name);
      std::optional<Address> address;
      TargetSettings settings;
      Keys keys = targetKeys(settings);
      keys.emplace_back("address", [&](const SettingsValue& value) {
        address = readAddress(value);
      });
      readKeys(target, name, keys);
      if (!address) {
        throw SettingsMistake{key.source().begin.line,
                              "[" + name + "] has no address"};
      }
      settings_.targets.emplace(key.str(),
                                NamedTarget{*address, std::move(settings)});
    }
  }

  std::vector<std::string> targetNames() const {
    std::vector<std::string> names;
    for (const auto& [name, target] : settings_.targets) {
      names.push_back(name);
    }
    return names;
  }

  void readInband(const toml::table& entries) {
    InBandSettings& inband = settings_.inband;
    TargetSettings ofSource;
    Keys keys = targetKeys(inband.settings);
    keys.emplace_back("source", [&](const SettingsValue& value) {
      const auto named = settings_.targets.find(readText(value));
      if (named != settings_.targets.end()) {
        inband.source = named->second.address;
        ofSource = named->second.settings;
      } else {
        inband.source = readAddress(value);
      }
    });
    keys.emplace_back("bootstrap-credentials", [&](const SettingsValue& value) {
      inband.bootstrapCredentials = readFlag(value);
    });
    keys.emplace_back("pci-ids", [&](const SettingsValue& value) {
      inband.pciIdsFile = readPath(value);
    });
    readKeys(entries, "inband", keys);
    inband.settings = overlay(inband.settings, ofSource);
  }

  std::string directory_;
  const std::string& home_;
  Settings settings_;
};

}  // namespace

TargetSettings overlay(const TargetSettings& first,
                       const TargetSettings& second) {
  TargetSettings both = first;
  const auto fill = [&](auto member) {
    if (!(both.*member)) {
      both.*member = second.*member;
    }
  };
  fill(&TargetSettings::user);
  fill(&TargetSettings::passwordFile);
  fill(&TargetSettings::caFile);
  fill(&TargetSettings::pin);
  fill(&TargetSettings::insecure);
  fill(&TargetSettings::plainHttp);
  fill(&TargetSettings::timeout);
  fill(&TargetSettings::deadline);
  fill(&TargetSettings::maxConnections);
  fill(&TargetSettings::ipmiPort);
  fill(&TargetSettings::thorough);
  return both;
}

base::Result<const std::vector<std::string>*> findGroup(
    const Settings& settings, const std::string& name) {
  const auto found = settings.groups.find(name);
  if (found != settings.groups.end()) {
    return &found->second;
  }
  std::vector<std::string> names;
  std::string list;
  for (const auto& [known, members] : settings.groups) {
    list += (list.empty() ? "" : ", ") + known;
    names.push_back(known);
  }
  return base::makeFailure(
      base::FailureKind::kUsage,
      settings.file.empty()
          ? "there is no settings file that would name groups"
          : "'" + base::escapeControls(name) + "' is no group in " +
                settings.file + (list.empty() ? "" : " (" + list + ")") +
                base::suggestionFor(name, names));
}

base::Result<Settings> loadSettings(const std::string& file,
                                    const std::string& home) {
  std::string reason;
  const std::optional<std::string> text =
      platform::readTrustedFile(fs::u8path(file), kLargestFile, reason);
  if (!text) {
    return base::usageFailure(file + ": " + reason);
  }
  return readSettings(*text, file, home);
}

base::Result<Settings> readSettings(std::string_view text,
                                    const std::string& file,
                                    const std::string& home) {
  if (const auto dotted = overlyDottedLine(text)) {
    return base::usageFailure(file + ":" + std::to_string(*dotted) +
                              ": a line holds more than " +
                              std::to_string(kMostDots) + " dots");
  }
  std::string reason;
  std::uint32_t line = 0;
  try {
    return SettingsReader(file, home).read(toml::parse(text, file));
  } catch (const SettingsMistake& mistake) {
    line = mistake.line;
    reason = mistake.text;
  } catch (const toml::parse_error& failure) {
    line = failure.source().begin.line;
    reason = std::string(failure.description()) + quotationHint(text, line);
  }
  return base::usageFailure(file + ":" + std::to_string(line) + ": " + reason);
}

}  // namespace connection
