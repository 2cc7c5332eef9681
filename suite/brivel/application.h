#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "suite/args/parser_scope.h"
#include "suite/base/result.h"
#include "suite/brivel/modules/module.h"
#include "suite/brivel/options/options.h"
#include "suite/brivel/result_line.h"

namespace brivel {

/// The command that shows something: the one of completion and lists.
inline constexpr std::int32_t kShowCommand = 1;

/// A loaded application. The host loads it before it understands the whole
/// command line, because the application says which options it takes. The
/// destructor unloads it.
class Application {
 public:
  /// Loads an application by its name and lets it register itself. Fails if
  /// there is no such application, or its module cannot be loaded, fails, or
  /// registers another name.
  static base::Result<Application> load(const std::string& name);

  /// Loads an application likewise, and lets it register its options.
  static base::Result<Application> loadFor(std::int32_t command,
                                           const std::string& name);

  /// Lets it register its options for a command (`kShowCommand`). If it refuses
  /// the command, `run` returns that result and runs nothing. Returns what is
  /// wrong if what it registers is not understood, or takes a name of the
  /// host's options; else an empty text.
  std::string registerOptions(std::int32_t command);

  /// What it says about itself.
  const args::Specification& specification() const;

  /// Its options as rows for the parser and the help, which refer to the
  /// specification: those that it has registered, and `kFleetOptions` if it
  /// reads several targets; or `kItemOptions` if its specification is empty.
  OptionList options() const;

  /// Hands it the values of its options and runs a command. An exception of
  /// the module becomes the suite's internal error.
  RunResult run(std::int32_t command, args::OptionValues values);

  /// Name, number and file in one line without line end.
  std::string listLine() const;

 private:
  Application(std::unique_ptr<args::ParserScope> parser, Module module);

  std::unique_ptr<args::ParserScope> parser_;  // Outlives the module.
  Module module_;
  RunResult registered_;
};

/// One line per application: name, number, file. `errors` gets one line per
/// module that cannot be loaded.
std::string listApplications(std::vector<std::string>& errors);

}  // namespace brivel
