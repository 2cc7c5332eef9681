#include "tests/golden/golden_case.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <utility>

#include "tests/bmc/control/controller.h"
#include "tests/golden/expectations.h"
#include "tests/golden/interruption.h"
#include "tests/golden/own_network.h"
#include "tests/golden/text_file.h"
#include "tests/support/child_process.h"
#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace golden {
namespace {

namespace fs = std::filesystem;

// Places that differ from machine to machine, and how a case writes them.
class Places {
 public:
  void add(std::string mark, std::string text) {
    places_.emplace_back(std::move(mark), std::move(text));
  }
  // A case's text, ready for this machine.
  std::string here(std::string text) const {
    for (const auto& [mark, place] : places_) {
      text = replaceAll(std::move(text), mark, place);
    }
    return text;
  }
  // A text of this machine, as cases write it.
  std::string anywhere(std::string text) const {
    for (const auto& [mark, place] : places_) {
      text = replaceAll(std::move(text), place, mark);
    }
    return text;
  }

 private:
  std::vector<std::pair<std::string, std::string>> places_;
};

// The recorded server that the file "sample" names, with the case's folder
// "overlay" laid over it, as WORK/tree.
void makeTree(const Case& theCase, const Setting& setting,
              const fs::path& work) {
  const auto names = linesOf(support::fileText(theCase.folder / "sample"));
  if (names.empty()) {
    return;
  }
  const auto options = fs::copy_options::recursive |
                       fs::copy_options::copy_symlinks |
                       fs::copy_options::overwrite_existing;
  fs::copy(setting.root / "samples" / names.front(), work / "tree", options);
  if (fs::exists(theCase.folder / "overlay")) {
    fs::copy(theCase.folder / "overlay", work / "tree", options);
  }
}

// The controller that the file "bmc" asks for; null when there is none.
std::unique_ptr<bmc::Controller> startController(const Case& theCase,
                                                 const fs::path& work,
                                                 Places& places) {
  const std::string options = support::fileText(theCase.inherited("bmc"));
  if (options.empty()) {
    return nullptr;
  }
  const std::string faults = support::fileText(theCase.file("faults.json"));
  writeText(work / "faults.json",
            faults.empty() ? "{}" : theCase.filled(faults));
  auto controller =
      std::make_unique<bmc::Controller>(linesOf(places.here(options)));
  EXPECT_TRUE(controller->running());
  places.add("@BMC@", controller->https());
  places.add("@BMC-HTTP@", controller->http());
  places.add("@CERTIFICATE@", controller->ready().certificate);
  places.add("@PIN@", controller->ready().pin);
  if (const int port = controller->ready().ipmiPort; port != 0) {
    places.add("@IPMI@", std::to_string(port));
  }
  return controller;
}

std::vector<std::string> environmentOf(const Case& theCase,
                                       const fs::path& work,
                                       const Places& places) {
  std::vector<std::string> environment{
      "LC_ALL=C", "PATH=/usr/bin:/bin", "HOME=" + (work / "home").string(),
      "XDG_CONFIG_HOME=" + (work / "config").string(),
      "XDG_STATE_HOME=" + (work / "state").string()};
  for (std::string& setting : support::sanitizerOptions()) {
    environment.push_back(std::move(setting));
  }
  const std::string own =
      places.here(support::fileText(theCase.inherited("env")));
  for (std::string& line : linesOf(own)) {
    environment.push_back(std::move(line));
  }
  return environment;
}

// Compares a text with the one that the case keeps, or keeps it.
void check(const Case& theCase, const Setting& setting, const char* file,
           const std::string& actual) {
  const fs::path kept = theCase.file(file);
  const std::string expected = theCase.filled(support::fileText(kept));
  if (setting.refresh && theCase.first) {
    writeText(kept, actual);
  } else if (setting.refresh && !theCase.variant.empty()) {
    if (expected != actual) {
      // Even if it is empty: it stands before the folder's own.
      std::ofstream(theCase.folder / (file + ("-" + theCase.variant)))
          << actual;
    }
  } else {
    EXPECT_EQ(expected, actual) << "differs from " << kept;
  }
}

// The lines of the file "log" occur in the log, in this order.
void checkLog(const Case& theCase, const std::string& log) {
  std::size_t at = 0;
  for (const std::string& line :
       linesOf(theCase.filled(support::fileText(theCase.file("log"))))) {
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

// The lines of the file "never" occur in nothing that the run wrote.
void checkNever(const Case& theCase, const Places& places,
                const std::string& everything) {
  const std::string kept =
      places.here(support::fileText(theCase.inherited("never")));
  for (const std::string& line : linesOf(kept)) {
    EXPECT_EQ(everything.find(line), std::string::npos)
        << "must never be written: " << line;
  }
}

// What the controller counted is what the file "counters" expects.
void checkCounters(const Case& theCase, const bmc::Controller& controller) {
  const std::string expected =
      theCase.filled(support::fileText(theCase.inherited("counters")));
  for (const std::string& text :
       unmet(expected, figuresOf(controller.counters()))) {
    ADD_FAILURE() << text << "\nthe requests:\n" << controller.log();
  }
}

// The run took no more than the file "limits" allows. Sanitizers take many
// times the memory and time, so what they measure says nothing.
void checkLimits(const Case& theCase, const Setting& setting,
                 const support::ChildEnd& end) {
#if !defined(SYSHEALTH_SANITIZED)
  const Figures figures{
      {"milliseconds", static_cast<std::uint64_t>(end.milliseconds)},
      {"kibibytes", setting.underWine ? 0 : end.kibibytes}};
  for (const std::string& text :
       unmet(theCase.filled(support::fileText(theCase.inherited("limits"))),
             figures)) {
    ADD_FAILURE() << text;
  }
#else
  static_cast<void>(theCase);
  static_cast<void>(setting);
  static_cast<void>(end);
#endif
}

}  // namespace

void runCase(const Case& theCase, const Setting& setting) {
  if (fs::exists(theCase.file("own-network")) && !enterOwnNetwork()) {
    GTEST_SKIP() << "the system gives this user no network of its own";
  }
  const support::TempFolder folder;
  const fs::path& work = folder.path();
  Places places;
  places.add("@WORK@", work.string());
  // The build may lie inside the source tree, so it is looked for first.
  places.add("@BUILD@", setting.program.parent_path().parent_path().string());
  places.add("@ROOT@", setting.root.string());

  makeTree(theCase, setting, work);
  const auto controller = startController(theCase, work, places);
  fs::create_directories(work / "config" / "brivel");
  fs::create_directories(work / "home");
  writeText(work / "config" / "brivel" / "brivel.toml",
            places.here(support::fileText(theCase.inherited("settings.toml"))));

  support::ChildOptions options;
  options.program = setting.program;
  options.arguments = linesOf(
      places.here(theCase.filled(support::fileText(theCase.arguments))));
  options.environment = environmentOf(theCase, work, places);
  options.directory = setting.root;
  options.input = support::fileText(theCase.folder / "stdin");
  support::ChildProcess child(options);
  const std::string order = support::fileText(theCase.file("interrupt"));
  if (!order.empty() && controller) {
    interrupt(linesOf(theCase.filled(order)).front(), *controller, child);
  }
  const support::ChildEnd end = child.wait();

  const std::string output = child.output();
  const std::string errors = child.errors();
  const std::string log =
      support::fileText(work / "state" / "brivel" / "brivel.log");
  check(theCase, setting, "stdout", places.anywhere(output));
  check(theCase, setting, "stderr", places.anywhere(errors));
  check(theCase, setting, "status",
        end.status == 0 ? "" : std::to_string(end.status) + "\n");
  checkLog(theCase, places.anywhere(log));
  checkNever(theCase, places, output + errors + log);
  checkLimits(theCase, setting, end);
  EXPECT_FALSE(end.dumpedCore);
  if (controller) {
    checkCounters(theCase, *controller);
  }
}

}  // namespace golden
