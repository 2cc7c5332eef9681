#include "suite/connection/settings/settings_values.h"

#include <filesystem>
#include <optional>

#include "suite/base/ascii.h"
#include "suite/connection/settings/values.h"

namespace connection {
namespace {

std::string resolvePath(const SettingsValue& value, const std::string& text) {
  return base::startsWith(text, "~/")
             ? value.home + text.substr(1)
             : (std::filesystem::path(value.directory) / text).string();
}

}  // namespace

void reject(const SettingsValue& value, const std::string& what) {
  throw SettingsMistake{value.node.source().begin.line,
                        "'" + std::string(value.key) + "' in [" +
                            std::string(value.table) + "] " + what};
}

std::string readText(const SettingsValue& value) {
  const auto text = value.node.value_exact<std::string>();
  if (!text || text->empty() || text->find('\0') != std::string::npos) {
    reject(value, "must be a text in quotation marks, and not empty");
  }
  return *text;
}

bool readFlag(const SettingsValue& value) {
  const auto flag = value.node.value_exact<bool>();
  if (!flag) {
    reject(value, "must be true or false");
  }
  return *flag;
}

int readNumber(const SettingsValue& value, int least, int most) {
  const auto number = value.node.value_exact<std::int64_t>();
  if (!number || *number < least || *number > most) {
    reject(value, "must be a whole number from " + std::to_string(least) +
                      " to " + std::to_string(most));
  }
  return static_cast<int>(*number);
}

std::chrono::milliseconds readSeconds(const SettingsValue& value) {
  const auto seconds =
      value.node.is_number() ? value.node.value<double>() : std::nullopt;
  const auto limit = seconds ? timeLimit(*seconds) : std::nullopt;
  if (!limit) {
    reject(value, "must be a number of seconds, more than 0, at most 86400");
  }
  return *limit;
}

std::string readPath(const SettingsValue& value) {
  return resolvePath(value, readText(value));
}

std::string readPin(const SettingsValue& value) {
  std::string pin = readText(value);
  if (!isPin(pin)) {
    reject(value, "must be sha256// and the digest of a public key in base64");
  }
  return pin;
}

Address readAddress(const SettingsValue& value) {
  base::Result<Address> address = parseAddress(readText(value));
  if (!address) {
    reject(value, "is no address: " + address.error().cause);
  }
  if (address->scheme == Address::Scheme::kDirectory) {
    address->directory = resolvePath(value, address->directory);
  }
  return *address;
}

}  // namespace connection
