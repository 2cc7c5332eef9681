#include "suite/brivel/completion_run.h"

#include <cstdint>
#include <iostream>

#include "suite/brivel/application.h"
#include "suite/brivel/modules/module_search.h"
#include "suite/brivel/options/completion.h"
#include "suite/brivel/run_settings.h"
#include "suite/connection/settings/settings.h"

namespace brivel {
namespace {

// The names that a part of the settings holds, a map by names.
template <typename Part>
std::vector<std::string> settingsNames(const std::string& file, Part part) {
  std::vector<std::string> names;
  if (const auto settings = readRunSettings(file)) {
    for (const auto& [name, value] : (*settings).*part) {
      names.push_back(name);
    }
  }
  return names;
}

}  // namespace

int runCompletion(const std::vector<std::string>& words) {
  // Alive to the end: the options' texts are theirs.
  std::vector<base::Result<Application>> loaded;
  CompletionSources sources;
  sources.applications = applicationNames;
  sources.targets = [](const std::string& file) {
    return settingsNames(file, &connection::Settings::targets);
  };
  sources.groups = [](const std::string& file) {
    return settingsNames(file, &connection::Settings::groups);
  };
  sources.options = [&](const std::string& name) {
    loaded.push_back(Application::loadFor(kShowCommand, name));
    const base::Result<Application>& application = loaded.back();
    return application ? application->options() : OptionList();
  };
  const Completion completion = complete(words, sources);
  for (const Proposal& proposal : completion.proposals) {
    std::cout << proposal.word << '\t' << proposal.help << '\n';
  }
  std::cout << std::flush;
  return completion.files ? kExitFiles : 0;
}

}  // namespace brivel
