#include "suite/brivel/completion_run.h"

#include <cstdint>
#include <iostream>
#include <optional>

#include "suite/brivel/application.h"
#include "suite/brivel/modules/module_search.h"
#include "suite/brivel/options/completion.h"
#include "suite/connection/settings/settings.h"
#include "suite/platform/user_paths.h"

namespace brivel {
namespace {

constexpr std::int32_t kShowCommand = 1;

std::vector<std::string> targetNames(const std::string& file) {
  const std::string chosen = file.empty() ? platform::settingsFile() : file;
  std::vector<std::string> names;
  std::string error;
  if (!chosen.empty()) {
    const auto settings =
        connection::loadSettings(chosen, platform::homeDirectory(), error);
    if (settings) {
      for (const auto& [name, target] : settings->targets) {
        names.push_back(name);
      }
    }
  }
  return names;
}

}  // namespace

int runCompletion(const std::vector<std::string>& words) {
  // Alive to the end: the options' texts are theirs.
  std::vector<std::optional<Application>> loaded;
  CompletionSources sources;
  sources.applications = applicationNames;
  sources.targets = targetNames;
  sources.options = [&](const std::string& name) {
    std::string error;
    loaded.push_back(Application::load(name, error));
    std::optional<Application>& application = loaded.back();
    return application && application->registerOptions(kShowCommand, error)
               ? application->options()
               : OptionList();
  };
  const Completion completion = complete(words, sources);
  for (const Proposal& proposal : completion.proposals) {
    std::cout << proposal.word << '\t' << proposal.help << '\n';
  }
  std::cout << std::flush;
  return completion.files ? kExitFiles : 0;
}

}  // namespace brivel
