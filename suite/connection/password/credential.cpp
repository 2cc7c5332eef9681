#include "suite/connection/password/credential.h"

#include <unistd.h>

#include <utility>

#include "suite/connection/password/password_file.h"
#include "suite/connection/password/password_line.h"
#include "suite/connection/password/password_prompt.h"
#include "suite/connection/password/silent_prompt.h"

namespace connection {
namespace {

base::Result<Credential> withOrigin(base::Result<base::Secret> password,
                                    const std::string& origin) {
  if (!password) {
    return std::move(password).error();
  }
  return Credential{*std::move(password), origin};
}

base::Result<Credential> ask(const Target& target) {
  const std::string question =
      "Password for " + target.user + " at " + toString(target.address) + ": ";
  return withOrigin(askPassword(question), "terminal");
}

}  // namespace

bool asksPerson(const Target& target, bool inEnvironment) {
  const PasswordSources& sources = target.password;
  return sources.optionFile.empty() && inputIsTerminal() &&
         (sources.standardInput ||
          (!inEnvironment && sources.settingsFile.empty()));
}

base::Result<Credential> findCredential(
    const Target& target, std::optional<base::Secret> environment) {
  const PasswordSources& sources = target.password;
  if (!sources.optionFile.empty()) {
    return withOrigin(readPasswordFile(sources.optionFile),
                      "file " + sources.optionFile);
  }
  // What is typed at a terminal would be shown; the prompt does not show it.
  if (sources.standardInput && inputIsTerminal()) {
    return ask(target);
  }
  if (sources.standardInput) {
    return withOrigin(readPasswordLine(STDIN_FILENO, "standard input"),
                      "standard input");
  }
  if (environment) {
    return withOrigin(*std::move(environment), "BRIVEL_PASSWORD");
  }
  if (!sources.settingsFile.empty()) {
    return withOrigin(readPasswordFile(sources.settingsFile),
                      "file " + sources.settingsFile);
  }
  return ask(target);
}

}  // namespace connection
