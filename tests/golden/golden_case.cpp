#include "tests/golden/golden_case.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <utility>

#include "tests/bmc/controller.h"
#include "tests/golden/child.h"
#include "tests/golden/expected_counters.h"
#include "tests/golden/text_file.h"

namespace golden {
namespace {

namespace fs = std::filesystem;

/// A new, empty folder that goes away with its owner.
class WorkFolder {
 public:
  WorkFolder() {
    std::string pattern = fs::temp_directory_path() / "brivel-golden-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) {
      throw std::runtime_error("cannot make " + pattern);
    }
    path_ = pattern;
  }
  ~WorkFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;

  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

/// Places that differ from machine to machine, and how a case writes them.
class Places {
 public:
  void add(std::string mark, std::string text) {
    places_.emplace_back(std::move(mark), std::move(text));
  }
  /// A case's text, ready for this machine.
  std::string here(std::string text) const {
    for (const auto& [mark, place] : places_) {
      text = replaceAll(std::move(text), mark, place);
    }
    return text;
  }
  /// A text of this machine, as cases write it.
  std::string anywhere(std::string text) const {
    for (const auto& [mark, place] : places_) {
      text = replaceAll(std::move(text), place, mark);
    }
    return text;
  }

 private:
  std::vector<std::pair<std::string, std::string>> places_;
};

/// The recorded server that the file "sample" names, with the case's folder
/// "overlay" laid over it, as WORK/tree.
void makeTree(const Case& theCase, const Setting& setting,
              const fs::path& work) {
  const auto names = linesOf(readText(theCase.folder / "sample"));
  if (names.empty()) return;
  const auto options =
      fs::copy_options::recursive | fs::copy_options::overwrite_existing;
  fs::copy(setting.root / "samples" / names.front(), work / "tree", options);
  if (fs::exists(theCase.folder / "overlay")) {
    fs::copy(theCase.folder / "overlay", work / "tree", options);
  }
}

/// The controller that the file "bmc" asks for; null when there is none.
std::unique_ptr<bmc::Controller> startController(const Case& theCase,
                                                 Places& places) {
  const std::string options = readText(theCase.folder / "bmc");
  if (options.empty()) return nullptr;
  auto controller =
      std::make_unique<bmc::Controller>(linesOf(places.here(options)));
  EXPECT_TRUE(controller->running());
  places.add("@BMC@", controller->https());
  places.add("@BMC-HTTP@", controller->http());
  places.add("@CERTIFICATE@", controller->ready().certificate);
  places.add("@PIN@", controller->ready().pin);
  return controller;
}

std::vector<std::string> environmentOf(const Case& theCase,
                                       const fs::path& work,
                                       const Places& places) {
  std::vector<std::string> environment{
      "LC_ALL=C", "PATH=/usr/bin:/bin", "HOME=" + (work / "home").string(),
      "XDG_CONFIG_HOME=" + (work / "config").string(),
      "XDG_STATE_HOME=" + (work / "state").string()};
  for (const char* name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"}) {
    if (const char* value = std::getenv(name)) {
      environment.push_back(std::string(name) + "=" + value);
    }
  }
  const std::string own = places.here(readText(theCase.folder / "env"));
  for (std::string& line : linesOf(own)) environment.push_back(std::move(line));
  return environment;
}

/// Compares a text with the one that the case keeps, or keeps it.
void check(const Case& theCase, const Setting& setting, const char* file,
           const std::string& actual) {
  const fs::path kept = theCase.folder / file;
  if (setting.refresh && theCase.first) {
    writeText(kept, actual);
    return;
  }
  EXPECT_EQ(readText(kept), actual) << "differs from " << kept;
}

/// The lines of the file "log" occur in the log, in this order.
void checkLog(const Case& theCase, const std::string& log) {
  std::size_t at = 0;
  for (const std::string& line : linesOf(readText(theCase.folder / "log"))) {
    const auto found = log.find(line, at);
    if (found == std::string::npos) {
      ADD_FAILURE() << "not in the log, or not in this order: " << line
                    << "\nthe log:\n"
                    << log;
      return;
    }
    at = found + line.size();
  }
}

/// The lines of the file "never" occur in nothing that the run wrote.
void checkNever(const Case& theCase, const Places& places,
                const std::string& everything) {
  const std::string kept = places.here(readText(theCase.folder / "never"));
  for (const std::string& line : linesOf(kept)) {
    EXPECT_EQ(everything.find(line), std::string::npos)
        << "must never be written: " << line;
  }
}

/// What the controller counted is what the file "counters" expects.
void checkCounters(const Case& theCase, const bmc::Controller& controller) {
  const std::string expected = readText(theCase.folder / "counters");
  for (const std::string& unmet :
       unmetCounters(expected, controller.counters())) {
    ADD_FAILURE() << unmet << "\nthe requests:\n" << controller.log();
  }
}

std::string nameOf(const fs::path& root, const fs::path& arguments) {
  constexpr std::string_view kPrefix = "args";
  std::string name =
      fs::relative(arguments.parent_path(), root).generic_string();
  const std::string file = arguments.filename().string();
  if (file.size() > kPrefix.size()) {
    name += "/" + file.substr(kPrefix.size() + 1);
  }
  std::replace(name.begin(), name.end(), '-', '_');
  std::replace(name.begin(), name.end(), ' ', '_');
  return name;
}

}  // namespace

std::vector<Case> findCases(const fs::path& root) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    const std::string file = entry.path().filename().string();
    if (entry.is_regular_file() &&
        (file == "args" || file.rfind("args-", 0) == 0)) {
      files.push_back(entry.path());
    }
  }
  std::sort(files.begin(), files.end());
  std::vector<Case> cases;
  for (const fs::path& file : files) {
    const fs::path folder = file.parent_path();
    const bool first = cases.empty() || cases.back().folder != folder;
    cases.push_back({folder, file, nameOf(root, file), first});
  }
  return cases;
}

void runCase(const Case& theCase, const Setting& setting) {
  const WorkFolder folder;
  const fs::path& work = folder.path();
  Places places;
  places.add("@WORK@", work.string());
  // The build may lie inside the source tree, so it is looked for first.
  places.add("@BUILD@", setting.program.parent_path().parent_path().string());
  places.add("@ROOT@", setting.root.string());

  makeTree(theCase, setting, work);
  const auto controller = startController(theCase, places);
  fs::create_directories(work / "config" / "brivel");
  fs::create_directories(work / "home");
  writeText(work / "config" / "brivel" / "brivel.toml",
            places.here(readText(theCase.folder / "settings.toml")));
  const fs::path input = theCase.folder / "stdin";

  Command command;
  command.program = setting.program;
  command.arguments = linesOf(places.here(readText(theCase.arguments)));
  command.environment = environmentOf(theCase, work, places);
  command.directory = setting.root;
  command.input = fs::exists(input) ? input : fs::path("/dev/null");
  command.output = work / "stdout";
  command.errors = work / "stderr";
  const int status = runChild(command);

  const std::string output = readText(command.output);
  const std::string errors = readText(command.errors);
  const std::string log = readText(work / "state" / "brivel" / "brivel.log");
  check(theCase, setting, "stdout", places.anywhere(output));
  check(theCase, setting, "stderr", places.anywhere(errors));
  check(theCase, setting, "status",
        status == 0 ? "" : std::to_string(status) + "\n");
  checkLog(theCase, places.anywhere(log));
  checkNever(theCase, places, output + errors + log);
  if (controller) checkCounters(theCase, *controller);
}

}  // namespace golden
