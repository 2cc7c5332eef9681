#include "tests/suite/brivel/program_fixture.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

ProgramFixture::ProgramFixture() {
  options.program = BRIVEL_PROGRAM;
  options.environment = {"HOME=" + home.path(), "LC_ALL=C",
                         "BRIVEL_MODULES=" SOUND_MODULES};
  for (const char* name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS"}) {
    if (const char* value = std::getenv(name)) {
      options.environment.push_back(std::string(name) + "=" + value);
    }
  }
}

ProgramEnd ProgramFixture::run(const std::vector<std::string>& arguments) {
  ChildProcess child(started(arguments));
  ProgramEnd end;
  end.status = child.wait();
  end.output = child.output();
  end.errors = child.errors();
  return end;
}

ChildOptions ProgramFixture::started(
    const std::vector<std::string>& arguments) const {
  ChildOptions whole = options;
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
  return home.path(".local/state/brivel/brivel.log");
}

std::string ProgramFixture::log() const {
  std::ifstream stream(logPath(), std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}
