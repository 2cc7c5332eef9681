#include "suite/brivel/options/options.h"

namespace brivel {

const HostCommand* findHostCommand(std::string_view name) {
  const auto* const found = std::find_if(
      std::begin(kHostCommands), std::end(kHostCommands),
      [&](const HostCommand& command) { return command.name == name; });
  return found == std::end(kHostCommands) ? nullptr : found;
}

}  // namespace brivel
