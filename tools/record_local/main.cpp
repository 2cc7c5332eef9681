// record-local: records what brivel reads of the machine it runs on, for a
// bug report or for tests.

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <string>

#include "suite/local/recording/recorder.h"

namespace {

int recordMachine(int argc, char** argv) {
  CLI::App app(
      "Records what brivel reads of this machine into a folder, which "
      "'brivel --local-root FOLDER syshealth' reads afterwards. Run it as "
      "root: the firmware's table is root's alone.");
  std::string folder;
  std::string root = "/";
  bool mask = false;
  app.add_option("FOLDER", folder,
                 "where to record; must not exist or be empty")
      ->required();
  app.add_flag("--mask", mask,
               "mask serial numbers, asset tags, UUIDs and MAC addresses");
  app.add_option("--root", root, "record another recorded machine");
  CLI11_PARSE(app, argc, argv);

  auto refusal = platform::PrivateFolder::Refusal::kNone;
  std::string reason;
  auto made = platform::PrivateFolder::make(folder, refusal, reason);
  if (!made) {
    std::cerr << "record-local: " << folder << ": " << reason << '\n';
    return 2;
  }
  masking::Masker masker;
  local::Recorder recorder(local::Root(root), *made, mask ? &masker : nullptr);
  recorder.record();
  for (const std::string& problem : recorder.problems()) {
    std::cerr << "record-local: " << problem << '\n';
  }
  return recorder.problems().empty() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return recordMachine(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << "record-local: " << error.what() << '\n';
    return 1;
  }
}
