#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/child_process.h"
#include "tests/support/temp_folder.h"

/// The first status of a run that a signal ended.
inline constexpr int kSignalled = 128;

/// How a run of the program ended.
struct ProgramEnd {
  int status = -1;
  std::string output;
  std::string errors;
};

/// Runs the built program with a home of its own, on the sample application.
class ProgramFixture : public testing::Test {
 protected:
  ProgramFixture();

  /// What runs are started with; cases change it.
  support::ChildOptions options;

  /// Runs the program to its end.
  ProgramEnd run(const std::vector<std::string>& arguments);

  /// Starts it, to be dealt with while it runs.
  support::ChildOptions started(
      const std::vector<std::string>& arguments) const;

  /// Lets the program look for applications in another directory.
  void useModules(const std::string& directory);

  /// Writes the user's settings file.
  void writeSettings(const std::string& text) const;

  std::string logPath() const;
  std::string log() const;

  support::TempFolder home;
};
