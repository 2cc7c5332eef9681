#include "suite/brivel/options/completion.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include "suite/base/ascii.h"
#include "suite/connection/device_items.h"

namespace brivel {
namespace {

constexpr std::string_view kFile = "file:";

// Whether a shell takes the text for one word, and nothing in it for a sign of
// its own.
bool isPlain(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) {
    return base::isAlphanumeric(c) ||
           std::string_view("._-+,:/@%").find(c) != std::string_view::npos;
  });
}

// The command line as far as it is typed, without the last word.
class Typed {
 public:
  explicit Typed(const CompletionSources& sources)
      : sources_(sources), options_(everyOption()) {}

  void read(const std::string& word) {
    if (awaiting != nullptr) {
      take(*awaiting, word);
      awaiting = nullptr;
    } else if (word == "--" && !optionsOver) {
      optionsOver = true;
    } else if (base::startsWith(word, "-") && !optionsOver) {
      readOption(word);
    } else if (application.empty()) {
      application = word;
      options_ = optionsBehind(word);
    } else {
      ++words;
    }
  }

  const OptionList& options() const { return options_; }

  std::string application;  // Empty: none yet. Also a command of the host.
  std::size_t words = 0;    // Behind the application, options left out.
  std::set<std::string_view> given;
  std::string settingsFile;
  const Option* awaiting = nullptr;  // The option that takes the next word.
  bool optionsOver = false;

 private:
  OptionList optionsBehind(const std::string& name) const {
    const HostCommand* const command = findHostCommand(name);
    return command == nullptr ? withHostOptions(sources_.options(name))
                              : optionsOf(*command);
  }

  void readOption(const std::string& word) {
    const bool isLong = base::startsWith(word, "--");
    const std::size_t equals = isLong ? word.find('=') : std::string::npos;
    const Option* const option =
        isLong            ? findOption(options_, word.substr(0, equals))
        : word.size() > 1 ? findOption(options_, word.back())
                          : nullptr;
    if (option == nullptr) {
      return;
    }
    given.insert(option->name);
    if (equals != std::string::npos) {
      take(*option, word.substr(equals + 1));
    } else if (takesArgument(*option)) {
      awaiting = option;
    }
  }

  void take(const Option& option, const std::string& value) {
    if (option.name == "--config") {
      settingsFile = value;
    }
  }

  const CompletionSources& sources_;
  OptionList options_;
};

// Adds a word if it begins with what is typed.
void propose(Completion& completion, std::string_view typed, std::string word,
             std::string_view help = "") {
  if (base::startsWith(word, typed) && isPlain(word)) {
    completion.proposals.push_back({std::move(word), std::string(help)});
  }
}

// The folders that a recorded server may be in.
void proposeFolders(Completion& completion, const std::string& typed) {
  const std::string path = typed.substr(kFile.size());
  const std::string parent = path.substr(0, path.rfind('/') + 1);
  std::error_code failure;
  std::filesystem::directory_iterator entry(parent.empty() ? "." : parent,
                                            failure);
  for (; !failure && entry != std::filesystem::directory_iterator();
       entry.increment(failure)) {
    const std::string name = entry->path().filename().u8string();
    std::error_code unknown;
    if (name.front() != '.' && entry->is_directory(unknown)) {
      propose(completion, typed, std::string(kFile) + parent + name + "/");
    }
  }
}

// Items with commas between: what stands before the last comma stays.
void proposeItems(Completion& completion, const std::string& typed) {
  const std::string before = typed.substr(0, typed.rfind(',') + 1);
  for (const std::string_view item : connection::deviceItems()) {
    const bool isThere =
        ("," + before).find("," + std::string(item) + ",") != std::string::npos;
    if (!isThere) {
      propose(completion, typed, before + std::string(item));
    }
  }
  if (before.empty()) {
    propose(completion, typed, "all");
  }
}

void proposeTargets(Completion& completion, const std::string& typed,
                    const Typed& line, const CompletionSources& sources) {
  for (std::string& name : sources.targets(line.settingsFile)) {
    propose(completion, typed, std::move(name));
  }
}

void proposeValues(Completion& completion, const Option& option,
                   const std::string& typed, const Typed& line,
                   const CompletionSources& sources) {
  switch (option.kind) {
    case ArgumentKind::kItems:
      proposeItems(completion, typed);
      break;
    case ArgumentKind::kTarget:
      proposeTargets(completion, typed, line, sources);
      if (base::startsWith(typed, kFile)) {
        proposeFolders(completion, typed);
      } else {
        propose(completion, typed, std::string(kFile), "a recorded server");
      }
      break;
    case ArgumentKind::kGroup:
      for (std::string& name : sources.groups(line.settingsFile)) {
        propose(completion, typed, std::move(name));
      }
      break;
    case ArgumentKind::kFile:
    case ArgumentKind::kFolder:
      completion.files = true;
      break;
    default:
      break;
  }
}

// Those that are not given yet; of the application alone where it asks so.
void proposeOptions(Completion& completion, const std::string& typed,
                    const Typed& line, bool ofApplication) {
  for (const Option& option : line.options()) {
    if (line.given.count(option.name) == 0 &&
        (!ofApplication || option.section == OptionSection::kApplication)) {
      propose(completion, typed, std::string(option.name), option.help);
    }
  }
}

void proposeApplications(Completion& completion, const std::string& typed,
                         const CompletionSources& sources) {
  for (std::string& name : sources.applications()) {
    propose(completion, typed, std::move(name));
  }
}

}  // namespace

Completion complete(const std::vector<std::string>& words,
                    const CompletionSources& sources) {
  const std::string typed = words.empty() ? "" : words.back();
  Typed line(sources);
  for (std::size_t index = 0; index + 1 < words.size(); ++index) {
    line.read(words[index]);
  }

  Completion completion;
  const std::size_t equals = typed.find('=');
  if (line.awaiting != nullptr) {
    proposeValues(completion, *line.awaiting, typed, line, sources);
  } else if (!line.optionsOver && base::startsWith(typed, "--") &&
             equals != std::string::npos) {
    const Option* const option =
        findOption(line.options(), typed.substr(0, equals));
    if (option != nullptr) {
      proposeValues(completion, *option, typed.substr(equals + 1), line,
                    sources);
    }
    for (Proposal& proposal : completion.proposals) {
      proposal.word.insert(0, typed, 0, equals + 1);
    }
  } else if (!line.optionsOver && base::startsWith(typed, "-")) {
    proposeOptions(completion, typed, line, false);
  } else if (line.application.empty()) {
    proposeApplications(completion, typed, sources);
    for (const HostCommand& command : kHostCommands) {
      propose(completion, typed, std::string(command.name), command.help);
    }
  } else if (line.application == kHelpCommand && line.words == 0) {
    proposeApplications(completion, typed, sources);
  } else if (line.application == kPinCommand) {
    proposeTargets(completion, typed, line, sources);
  } else if (typed.empty()) {
    proposeOptions(completion, typed, line, true);
  }
  return completion;
}

}  // namespace brivel
