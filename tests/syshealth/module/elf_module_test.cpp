#include <gmock/gmock.h>

#include "tests/syshealth/module/elf_file.h"
#include "tests/syshealth/module/seam_names.h"

// The built library as a file: what it gives to the host, and what it takes
// from the suite.

namespace {

using testing::UnorderedElementsAre;

TEST(ModuleFile, ExportsTheThreeEntryPointsOnly) {
  EXPECT_THAT(readElfFile(MODULE_FILE).exports,
              UnorderedElementsAre("Init", "ParamRegister", "AppMain"));
}

TEST(ModuleFile, ImportsTheSeamOnly) {
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
  std::set<std::string> seam = seamNames();
  seam.insert("typeinfo for AppBase");  // On Windows each side has its own.
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
