#include <gmock/gmock.h>

#include "tests/syshealth/module/pe_file.h"
#include "tests/syshealth/module/seam_names.h"

// The built library as a file: what it gives to the host, and what it takes
// from the suite.

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Key;

TEST(ModuleFile, ExportsTheThreeEntryPointsOnly) {
  EXPECT_THAT(readPeFile(MODULE_FILE).exports,
              ElementsAre("AppMain", "Init", "ParamRegister"));
}

TEST(ModuleFile, ImportsTheSeamFromTheSuite) {
  const PeFile file = readPeFile(MODULE_FILE);
  std::set<std::string> imports;
  for (const std::string& symbol : file.imports.at("brivel.dll")) {
    imports.insert(readable(symbol));
  }
  EXPECT_EQ(imports, seamNames());
}

TEST(ModuleFile, SharesTheRuntimeOfTheHost) {
  const auto imports = readPeFile(MODULE_FILE).imports;
  EXPECT_THAT(imports, Contains(Key("libstdc++-6.dll")));
  EXPECT_THAT(imports, Contains(Key("libgcc_s_seh-1.dll")));
}

TEST(ModuleFile, FileThatIsNoLibraryIsRefused) {
  EXPECT_THROW(readPeFile(__FILE__), std::runtime_error);
}

}  // namespace
