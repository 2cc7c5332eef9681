#include "suite/brivel/options/options.h"

namespace brivel {

OptionList hostOptions() {
  OptionList options(std::begin(kOptions), std::end(kOptions));
  options.insert(options.end(), std::begin(kFleetOptions),
                 std::end(kFleetOptions));
  options.insert(options.end(), std::begin(kCommandOptions),
                 std::end(kCommandOptions));
  return options;
}

OptionList everyOption() {
  OptionList options(std::begin(kItemOptions), std::end(kItemOptions));
  const OptionList hosts = hostOptions();
  options.insert(options.end(), hosts.begin(), hosts.end());
  return options;
}

const HostCommand* findHostCommand(std::string_view name) {
  const auto* const found = std::find_if(
      std::begin(kHostCommands), std::end(kHostCommands),
      [&](const HostCommand& command) { return command.name == name; });
  return found == std::end(kHostCommands) ? nullptr : found;
}

OptionList optionsOf(const HostCommand& command) {
  const OptionList all = hostOptions();
  OptionList taken;
  std::copy_if(all.begin(), all.end(), std::back_inserter(taken),
               [&](const Option& option) {
                 return option.section == OptionSection::kFiles ||
                        option.section == OptionSection::kOther ||
                        std::find(command.options.begin(),
                                  command.options.end(),
                                  option.name) != command.options.end();
               });
  return taken;
}

}  // namespace brivel
