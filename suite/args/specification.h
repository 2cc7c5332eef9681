#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "suite/base/result.h"

namespace args {

/// One option of an application.
struct ApplicationOption {
  std::string name;      ///< With its dashes: "--format".
  std::string argument;  ///< How the help calls its value; empty: a flag.
                         ///< "N" stands for a whole number.
  std::string help;      ///< One line; may be empty.
};

/// What an application says about itself by `ArgParser::RegisterOption`.
struct Specification {
  std::string summary;  ///< What the application does, one line.
  std::vector<ApplicationOption> options;
  bool plugInExit = false;   ///< Exit statuses of a monitoring plug-in, 0 to 3.
  bool manyTargets = false;  ///< It can read several targets in one run.
};

/// Reads the text of a specification. The first line says what the application
/// does. Each further line is one of
///
///     --name             a flag
///     --name WORD        an option that takes a text
///     exit: plug-in
///     targets: many
///
/// An option may stand behind blanks, and its help follows behind at least two
/// blanks. Lines that begin with a blank and not with a dash continue it, so
/// that the text can be laid out like a help text. The empty text is the empty
/// specification. If the text is anything else, the cause of the failure names
/// the line.
base::Result<Specification> parseSpecification(std::string_view text);

}  // namespace args
