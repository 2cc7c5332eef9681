#include "suite/brivel/pin_command.h"

#include <algorithm>
#include <iostream>
#include <string>

#include "suite/base/ascii.h"
#include "suite/brivel/console.h"
#include "suite/brivel/exit_status.h"
#include "suite/connection/failure_result.h"
#include "suite/connection/settings/target.h"
#include "suite/connection/shown_pin.h"
#include "suite/platform/interrupt.h"

namespace brivel {
namespace {

constexpr char kWarning[] =
    "# Nobody has verified these keys: they are what answered just now. "
    "Compare\n"
    "# each with what the controller shows on its own console before you use "
    "it.\n";

// A text as TOML takes it between quotation marks. Names and addresses are
// without control characters.
std::string quoted(const std::string& text) {
  std::string literal = "\"";
  for (const char c : text) {
    literal += c == '"' || c == '\\' ? "\\" : "";
    literal += c;
  }
  return literal + "\"";
}

// A name as TOML takes it for a key.
std::string keyOf(const std::string& name) {
  const bool bare = std::all_of(name.begin(), name.end(), [](char c) {
    return base::isAlphanumeric(c) || c == '-' || c == '_';
  });
  return bare ? name : quoted(name);
}

// "10.0.0.5", "[fe80::1]:8443": as the settings take it.
std::string addressText(const connection::Address& address) {
  std::string text = address.host.find(':') == std::string::npos
                         ? address.host
                         : "[" + address.host + "]";
  return text + (address.port == 0 ? "" : ":" + std::to_string(address.port));
}

// The table of a target in the settings, with the key that it has shown.
std::string tableOf(const std::string& name, const connection::Target& target,
                    bool named, const std::string& pin) {
  const std::string key = keyOf(named ? name : target.address.host);
  std::string text = "\n[targets." + key + "]\n";
  text += "address = " + quoted(addressText(target.address)) + "\n";
  if (!target.user.empty()) {
    text += "user = " + quoted(target.user) + "\n";
  }
  return text + "pin = " + quoted(pin) + "\n";
}

// Tells how the settings' own pin of a target stands to what it shows.
void compare(const std::string& name, const connection::Target& target,
             const std::string& pin) {
  if (!target.pin.empty()) {
    printError(name + (target.pin.find(pin) != std::string::npos
                           ? ": the settings pin this key already"
                           : ": warning: the settings pin another key, " +
                                 target.pin));
  }
}

}  // namespace

int showPins(const CommandLine& line, const connection::Settings& settings) {
  platform::installInterruptHandlers();
  int status = kExitSuccess;
  bool begun = false;
  for (const std::string& name : line.arguments) {
    connection::TargetChoice choice = line.target;
    choice.text = name;
    const auto resolved = connection::resolveTarget(choice, settings);
    if (!resolved) {
      printError(resolved.error().cause);
      status = kExitUsage;
      continue;
    }
    const std::optional<connection::Target>& target = *resolved;
    if (!target) {
      printError("an empty text names no target");
      status = kExitUsage;
      continue;
    }
    const auto pin = connection::readShownPin(*target);
    if (platform::interrupted()) {
      printError("interrupted");
      return kExitInterrupted;
    }
    if (!pin) {
      printError(describe(pin.error()));
      status = exitStatusOf(connection::resultOf(pin.error().kind));
      continue;
    }
    compare(name, *target, *pin);
    const bool named = settings.targets.count(name) > 0;
    const int shown =
        show((begun ? "" : kWarning) + tableOf(name, *target, named, *pin));
    status = shown == kExitSuccess ? status : shown;
    begun = true;
  }
  return status;
}

}  // namespace brivel
