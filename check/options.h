#pragma once

#include <string>

namespace check {

/// What this application tells the host of itself.
extern const char kSpecification[];

/// The options of a run.
struct Options {
  std::string ignore;        ///< As `IgnoreList` takes it.
  std::string baseline;      ///< File to compare with; empty: none.
  std::string saveBaseline;  ///< File to write; empty: none.
  bool oneNode = false;      ///< One node is asked for, not all of them.
};

/// Reads the options from the host's parser.
Options readOptions();

}  // namespace check
