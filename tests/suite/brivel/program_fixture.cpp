#include "tests/suite/brivel/program_fixture.h"

#include <utility>

#include "tests/support/file_text.h"

ProgramFixture::ProgramFixture() {
  options.program = BRIVEL_PROGRAM;
  options.environment = {"HOME=" + home.path().string(), "LC_ALL=C",
                         "BRIVEL_MODULES=" SOUND_MODULES};
  for (std::string& setting : support::sanitizerOptions()) {
    options.environment.push_back(std::move(setting));
  }
}

ProgramEnd ProgramFixture::run(const std::vector<std::string>& arguments) {
  support::ChildProcess child(started(arguments));
  ProgramEnd end;
  end.status = child.wait().status;
  end.output = child.output();
  end.errors = child.errors();
  return end;
}

support::ChildOptions ProgramFixture::started(
    const std::vector<std::string>& arguments) const {
  support::ChildOptions whole = options;
  whole.arguments = arguments;
  return whole;
}

void ProgramFixture::useModules(const std::string& directory) {
  for (std::string& setting : options.environment) {
    if (setting.rfind("BRIVEL_MODULES=", 0) == 0) {
      setting = "BRIVEL_MODULES=" + directory;
    }
  }
}

void ProgramFixture::writeSettings(const std::string& text) const {
  home.write(".config/brivel/brivel.toml", text);
}

std::string ProgramFixture::logPath() const {
  return home.at(".local/state/brivel/brivel.log");
}

std::string ProgramFixture::log() const { return support::fileText(logPath()); }
