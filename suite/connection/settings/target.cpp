#include "suite/connection/settings/target.h"

#include <cstddef>
#include <utility>
#include <vector>

#include "suite/base/ascii.h"
#include "suite/base/suggestion.h"
#include "suite/platform/user_paths.h"

namespace connection {
namespace {

// The choice's address with what the settings, or the address itself, say
// about it; nullopt for this machine without a source in the settings.
base::Result<std::optional<NamedTarget>> find(const TargetChoice& choice,
                                              const Settings& settings) {
  std::optional<NamedTarget> found;
  const auto named = settings.targets.find(choice.text);
  if (choice.text.empty()) {
    if (settings.inband.source) {
      found = NamedTarget{*settings.inband.source, settings.inband.settings};
    }
  } else if (named != settings.targets.end()) {
    found = named->second;
  } else {
    base::Result<Address> address = parseAddress(choice.text);
    if (!address) {
      return address.error();
    }
    const std::string& user = address->user;
    if (choice.given.user && !user.empty() && *choice.given.user != user) {
      return base::usageFailure("two users are given: '" + user +
                                "' in the address, and '" + *choice.given.user +
                                "' by --user");
    }
    if (base::startsWith(address->directory, "~/")) {
      address->directory.replace(0, 1, platform::homeDirectory());
    }
    found = NamedTarget{*std::move(address), {}};
  }
  if (found && !found->settings.user && !found->address.user.empty()) {
    found->settings.user = found->address.user;
  }
  return found;
}

std::string settingsPasswordFile(const std::string& user,
                                 const NamedTarget& found,
                                 const Settings& settings) {
  for (const TargetSettings* table : {&found.settings, &settings.defaults}) {
    if (table->passwordFile && table->user.value_or(user) == user) {
      return *table->passwordFile;
    }
  }
  return "";
}

// Notes that a text names no target of the settings, if they name any.
void noteNotNamed(const std::string& text, const Settings& settings,
                  Target& target) {
  constexpr std::size_t kMostNames = 10;
  if (text.empty() || settings.targets.empty() ||
      settings.targets.count(text) > 0) {
    return;
  }
  std::vector<std::string> names;
  std::string list;
  for (const auto& [name, named] : settings.targets) {
    if (names.size() < kMostNames) {
      list += (list.empty() ? "" : ", ") + name;
    }
    names.push_back(name);
  }
  list += names.size() > kMostNames ? ", ..." : "";
  target.similarName = base::mostSimilar(text, names);
  target.notNamed =
      "'" + text + "' is no target in " + settings.file + " (" + list + ")";
}

// Why the target must not be asked in this way; empty if it may be.
std::string problemWith(const Target& target) {
  const bool passwordGiven =
      target.password.standardInput || !target.password.optionFile.empty();
  if (target.address.scheme != Address::Scheme::kDirectory &&
      target.user.empty() && passwordGiven) {
    return "a password is given, but no user; add --user NAME";
  }
  if (target.address.scheme != Address::Scheme::kHttp ||
      isLoopback(target.address)) {
    return "";
  }
  if (!target.plainHttp) {
    return "http:// is not encrypted, and meant for this machine itself; use "
           "https://, or allow it by plain-http = true in the settings";
  }
  if (!target.user.empty()) {
    return "no password is sent over http:// to another machine; use https://, "
           "or name no user";
  }
  return "";
}

// The target with all that the sources say of it.
Target merge(const TargetChoice& choice, const NamedTarget& found,
             const Settings& settings) {
  const TargetSettings merged =
      overlay(overlay(choice.given, found.settings), settings.defaults);
  Target target;
  target.address = found.address;
  if (settings.targets.count(choice.text) > 0) {
    target.name = choice.text;
  }
  noteNotNamed(choice.text, settings, target);
  target.user = merged.user.value_or("");
  target.password = {choice.given.passwordFile.value_or(""),
                     choice.passwordFromStdin,
                     settingsPasswordFile(target.user, found, settings)};
  target.caFile = merged.caFile.value_or("");
  target.pin = merged.pin.value_or("");
  target.insecure = merged.insecure.value_or(target.insecure);
  target.timeout = merged.timeout.value_or(target.timeout);
  target.deadline = merged.deadline.value_or(target.deadline);
  target.maxConnections = merged.maxConnections.value_or(target.maxConnections);
  target.ipmiPort = merged.ipmiPort.value_or(target.ipmiPort);
  target.thorough = merged.thorough.value_or(target.thorough);
  target.plainHttp = merged.plainHttp.value_or(target.plainHttp);
  return target;
}

}  // namespace

base::Result<std::optional<Target>> resolveTarget(const TargetChoice& choice,
                                                  const Settings& settings) {
  const base::Result<std::optional<NamedTarget>> found = find(choice, settings);
  if (!found) {
    return found.error();
  }
  if (!*found) {
    return std::optional<Target>();
  }
  Target target = merge(choice, **found, settings);
  std::string problem = problemWith(target);
  if (!problem.empty()) {
    return base::usageFailure(std::move(problem));
  }
  return std::optional(std::move(target));
}

Target controllerTarget(const TargetChoice& choice, const Settings& settings) {
  return merge(choice, {{}, settings.inband.settings}, settings);
}

}  // namespace connection
