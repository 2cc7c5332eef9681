#include "suite/connection/password/credential.h"

#include <unistd.h>

#include <utility>

#include "suite/connection/password/password_file.h"
#include "suite/connection/password/password_line.h"
#include "suite/connection/password/password_prompt.h"

namespace connection {
namespace {

std::optional<Credential> withOrigin(std::optional<base::Secret> password,
                                     const std::string& origin) {
  if (!password) {
    return std::nullopt;
  }
  return Credential{*std::move(password), origin};
}

std::optional<Credential> ask(const Target& target, base::Failure& failure) {
  const std::string question =
      "Password for " + target.user + " at " + inWords(target.address) + ": ";
  return withOrigin(askPassword(question, failure), "terminal");
}

}  // namespace

std::optional<Credential> findCredential(
    const Target& target, std::optional<base::Secret> environment,
    base::Failure& failure) {
  const PasswordSources& sources = target.password;
  if (!sources.optionFile.empty()) {
    return withOrigin(readPasswordFile(sources.optionFile, failure),
                      "file " + sources.optionFile);
  }
  // What is typed at a terminal would be shown; the prompt does not show it.
  if (sources.standardInput && inputIsTerminal()) {
    return ask(target, failure);
  }
  if (sources.standardInput) {
    return withOrigin(readPasswordLine(STDIN_FILENO, "standard input", failure),
                      "standard input");
  }
  if (environment) {
    return withOrigin(std::move(environment), "BRIVEL_PASSWORD");
  }
  if (!sources.settingsFile.empty()) {
    return withOrigin(readPasswordFile(sources.settingsFile, failure),
                      "file " + sources.settingsFile);
  }
  return ask(target, failure);
}

}  // namespace connection
