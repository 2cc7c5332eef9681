#include "suite/connection/password/password_prompt.h"

#include <optional>
#include <utility>

#include "suite/connection/password/silent_prompt.h"

namespace connection {
namespace {

base::Failure notAsked(std::string cause, std::string remedy) {
  base::Failure failure =
      base::makeFailure(base::FailureKind::kNoCredentials, std::move(cause));
  failure.remedy = std::move(remedy);
  return failure;
}

}  // namespace

base::Result<base::Secret> askPassword(const std::string& question) {
  const std::string terminal = kTerminalWord;
  if (!inputIsTerminal()) {
    return notAsked("no password is given",
                    "use --password-file, --password-stdin or "
                    "BRIVEL_PASSWORD, or run at a " +
                        terminal + " to be asked");
  }
  std::optional<base::Result<base::Secret>> answer = askSilently(question);
  if (!answer) {
    return notAsked(
        "the " + terminal + " cannot be kept from showing a password",
        "use --password-file or --password-stdin");
  }
  return *std::move(answer);
}

}  // namespace connection
