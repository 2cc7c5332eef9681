#include "suite/brivel/modules/module_search.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "tests/support/temp_folder.h"

namespace {

using brivel::findModule;
using brivel::moduleDirectory;
using brivel::moduleFiles;

TEST(ModuleDirectory, IsBesideTheLibrary) {
  unsetenv("BRIVEL_MODULES");
  const auto directory = moduleDirectory();
  EXPECT_TRUE(directory.is_absolute());
  // This test holds the suite's objects itself; where the build tree has the
  // modules, there is no directory beside it, so it is that of an installation.
  EXPECT_EQ(directory.filename().string().rfind("applications-", 0), 0U);
  EXPECT_EQ(directory.parent_path(),
            std::filesystem::canonical("/proc/self/exe").parent_path());
}

TEST(ModuleDirectory, IsWhereTheVariableSays) {
  setenv("BRIVEL_MODULES", "some/where", 1);
  EXPECT_EQ(moduleDirectory(), std::filesystem::current_path() / "some/where");
  unsetenv("BRIVEL_MODULES");
}

TEST(ModuleFiles, AreTheLibrariesByName) {
  const support::TempFolder directory;
  directory.write("b.so", "");
  directory.write("a.so", "");
  directory.write("readme.txt", "");
  directory.write("c.so.1", "");
  const auto files = moduleFiles(directory.path().string());
  ASSERT_EQ(files.size(), 2U);
  EXPECT_EQ(files[0].filename(), "a.so");
  EXPECT_EQ(files[1].filename(), "b.so");
}

TEST(ModuleFiles, AreNoneWithoutADirectory) {
  EXPECT_TRUE(moduleFiles("/nonexistent/directory").empty());
}

TEST(FindModule, FindsTheFileOfTheName) {
  const support::TempFolder directory;
  const std::string file = directory.write("fan-control_2.so", "");
  EXPECT_EQ(*findModule(directory.path().string(), "fan-control_2"), file);
}

TEST(FindModule, MissingOneIsToldWithTheOthers) {
  const support::TempFolder directory;
  directory.write("b.so", "");
  directory.write("a.so", "");
  const auto found = findModule(directory.path().string(), "c");
  ASSERT_FALSE(found);
  EXPECT_EQ(found.error().cause, "no application 'c' in " +
                                     directory.path().string() +
                                     "; there are: a, b");
}

TEST(FindModule, MissingOneIsToldWhenThereAreNone) {
  const support::TempFolder directory;
  const auto found = findModule(directory.path().string(), "c");
  ASSERT_FALSE(found);
  EXPECT_EQ(found.error().cause, "no application 'c' in " +
                                     directory.path().string() +
                                     "; there are none");
}

TEST(FindModule, LeavesTheDirectoryForNoName) {
  const support::TempFolder directory;
  directory.write("a.so", "");
  directory.write("inner/b.so", "");
  for (const char* name :
       {"", ".", "..", "../inner/b", "inner/b", "a.so/../a", "a b", "a\n"}) {
    const auto found = findModule(directory.at("inner"), name);
    ASSERT_FALSE(found) << name;
    EXPECT_NE(found.error().cause, "");
  }
}

TEST(FindModule, DoesNotRepeatWhatIsNoName) {
  const auto found = findModule("/", "admin:hunter2@bmc");
  ASSERT_FALSE(found);
  EXPECT_EQ(found.error().cause.find("hunter2"), std::string::npos);
}

}  // namespace
