#include <cxxabi.h>
#include <gmock/gmock.h>

#include <cstdlib>
#include <memory>
#include <set>

#include "tests/syshealth/module/elf_file.h"

// The built library as a file: what it gives to the host, and what it takes
// from the suite.

namespace {

using testing::UnorderedElementsAre;

// A name as it stands in the sources, without the list of parameters.
std::string readable(const std::string& symbol) {
  const std::unique_ptr<char, decltype(&std::free)> text(
      abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, nullptr),
      &std::free);
  const std::string name = text ? text.get() : symbol;
  return name.substr(0, name.find_first_of("(["));
}

TEST(ModuleFile, ExportsTheThreeEntryPointsOnly) {
  EXPECT_THAT(readElfFile(MODULE_FILE).exports,
              UnorderedElementsAre("Init", "ParamRegister", "AppMain"));
}

TEST(ModuleFile, ImportsTheSeamOnly) {
  const std::set<std::string> seam = {
      "AppBase::AppBase",
      "AppBase::~AppBase",
      "typeinfo for AppBase",
      "ArgParser::GetInstance",
      "ArgParser::RegisterApp",
      "ArgParser::RegisterOption",
      "ArgParser::GetValue",
      "ConnectInfo::Getinstance",
      "ConnectInfo::GetConMode",
      "ConnectInfo::TryCimCon",
      "ConnectInfo::GetCimConnectInfo",
      "ConnectInfo::GetIpmiConnectInfo",
      "ConnectInfo::ParseCimError",
      "Tarvex::Log::Log",
      "Tarvex::Log::~Log",
      "Tarvex::Log::Stream",
      "Tarvex::Log::GetMinLogLevel",
      "Tarvex::Agentless::OrvaneTypeAcquire::OrvaneTypeAcquire",
      "Tarvex::Agentless::OrvaneTypeAcquire::~OrvaneTypeAcquire",
      "Tarvex::Agentless::OrvaneTypeAcquire::GetOrvaneType",
      "Tarvex::DeviceHealth::DevHealth::DevHealth",
      "Tarvex::DeviceHealth::DevHealth::~DevHealth",
      "Tarvex::DeviceHealth::DevHealth::connect",
      "Tarvex::DeviceHealth::DevHealth::getHealthSum",
      "Tarvex::DeviceHealth::DevHealth::get_system",
      "Tarvex::DeviceHealth::DevHealth::get_processors",
      "Tarvex::DeviceHealth::DevHealth::get_fans",
      "Tarvex::DeviceHealth::DevHealth::get_DIMMs",
      "Tarvex::DeviceHealth::DevHealth::get_Powers",
      "Tarvex::DeviceHealth::DevHealth::get_PCIApaters"};
  std::set<std::string> imports;
  for (const std::string& symbol : readElfFile(MODULE_FILE).imports) {
    const bool ofASanitizer =
        symbol.rfind("__asan_", 0) == 0 || symbol.rfind("__ubsan_", 0) == 0;
    // Asked for by the sanitizer's check of virtual calls.
    const bool typeOfTheLog = readable(symbol) == "typeinfo for Tarvex::Log";
    if (!ofASanitizer && !typeOfTheLog) {
      imports.insert(readable(symbol));
    }
  }
  EXPECT_EQ(imports, seam);
}

TEST(ModuleFile, FindsTheSuiteOneFolderUp) {
  EXPECT_EQ(readElfFile(MODULE_FILE).runPath, "$ORIGIN/..");
}

TEST(ModuleFile, PrefersNoDefinitionsOfItsOwn) {
  EXPECT_FALSE(readElfFile(MODULE_FILE).symbolic);
}

TEST(ModuleFile, FileThatIsNoLibraryIsRefused) {
  EXPECT_THROW(readElfFile(__FILE__), std::runtime_error);
}

}  // namespace
