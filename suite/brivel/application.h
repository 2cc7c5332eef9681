#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "suite/args/parser_scope.h"
#include "suite/brivel/modules/module.h"
#include "suite/brivel/options/options.h"
#include "suite/brivel/result_line.h"

namespace brivel {

/// A loaded application. The host loads it before it understands the whole
/// command line, because the application says which options it takes. The
/// destructor unloads it.
class Application {
 public:
  /// Loads an application by its name and lets it register itself. Returns
  /// nullopt and sets `error` if there is no such application, or its module
  /// cannot be loaded, fails, or registers another name.
  static std::optional<Application> load(const std::string& name,
                                         std::string& error);

  /// Lets it register its options for a command (1: show). If it refuses the
  /// command, `run` returns that result and runs nothing. Returns false and
  /// sets `error` if what it registers is not understood, or takes a name of
  /// the host's options.
  bool registerOptions(std::int32_t command, std::string& error);

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
