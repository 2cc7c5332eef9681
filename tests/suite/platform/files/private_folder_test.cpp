#include "suite/platform/files/private_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace platform {
namespace {

namespace fs = std::filesystem;
using Refusal = PrivateFolder::Refusal;

class PrivateFolderTest : public testing::Test {
 protected:
  std::optional<PrivateFolder> make(const std::string& name) {
    return PrivateFolder::make(home.at(name), refusal, reason);
  }

  static unsigned rightsOf(const std::string& path) {
    struct stat status = {};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777U;
  }

  support::TempFolder home;
  Refusal refusal = Refusal::kNone;
  std::string reason;
};

TEST_F(PrivateFolderTest, IsForItsOwnerAlone) {
  const mode_t before = umask(0);
  auto folder = make("a/b");
  ASSERT_TRUE(folder) << reason;
  EXPECT_TRUE(folder->write("c/d/file", "text", reason)) << reason;
  umask(before);
  EXPECT_EQ(rightsOf(home.at("a/b")), 0700U);
  EXPECT_EQ(rightsOf(home.at("a/b/c")), 0700U);
  EXPECT_EQ(rightsOf(home.at("a/b/c/d")), 0700U);
  EXPECT_EQ(rightsOf(home.at("a/b/c/d/file")), 0600U);
  EXPECT_EQ(support::fileText(home.at("a/b/c/d/file")), "text");
}

TEST_F(PrivateFolderTest, TakesAnEmptyFolderAndClosesIt) {
  fs::create_directory(home.at("empty"));
  fs::permissions(home.at("empty"), fs::perms::all);
  EXPECT_TRUE(make("empty"));
  EXPECT_EQ(rightsOf(home.at("empty")), 0700U);
}

TEST_F(PrivateFolderTest, RefusesWhatIsInUse) {
  home.write("full/file", "");
  EXPECT_FALSE(make("full"));
  EXPECT_EQ(refusal, Refusal::kInUse);
  EXPECT_EQ(reason, "it is not empty");
  home.write("plain", "");
  EXPECT_FALSE(make("plain"));
  EXPECT_EQ(refusal, Refusal::kInUse);
  EXPECT_EQ(reason, "it is no folder");
  fs::create_symlink(home.at("elsewhere"), home.at("link"));
  EXPECT_FALSE(make("link"));
  EXPECT_EQ(refusal, Refusal::kInUse);
  EXPECT_EQ(reason, "it is a symbolic link");
  EXPECT_FALSE(fs::exists(home.at("elsewhere")));
}

TEST_F(PrivateFolderTest, TellsWhyItCannotBeMade) {
  home.write("plain", "");
  EXPECT_FALSE(make("plain/below"));
  EXPECT_EQ(refusal, Refusal::kUnwritable);
  EXPECT_EQ(reason, "Not a directory");
}

TEST_F(PrivateFolderTest, FollowsAndReplacesNothing) {
  auto folder = make("f");
  ASSERT_TRUE(folder);
  home.write("elsewhere/victim", "old");
  fs::create_symlink(home.at("elsewhere"), home.at("f/link"));
  fs::create_symlink(home.at("elsewhere/victim"), home.at("f/file"));
  EXPECT_FALSE(folder->write("link/new", "x", reason));
  EXPECT_FALSE(folder->write("file", "x", reason));
  EXPECT_EQ(support::fileText(home.at("elsewhere/victim")), "old");
  EXPECT_FALSE(fs::exists(home.at("elsewhere/new")));
}

TEST_F(PrivateFolderTest, RefusesNamesThatLeadOut) {
  auto folder = make("f");
  ASSERT_TRUE(folder);
  for (const char* name : {"", ".", "..", "../x", "a/../../x", "/x", "a//x"}) {
    EXPECT_FALSE(folder->write(name, "x", reason)) << name;
  }
}

TEST_F(PrivateFolderTest, MakesAndRemoves) {
  auto folder = make("f");
  ASSERT_TRUE(folder);
  EXPECT_TRUE(folder->link("a/link", "../target", reason)) << reason;
  EXPECT_EQ(fs::read_symlink(home.at("f/a/link")), "../target");
  EXPECT_TRUE(folder->write("file", "", reason));
  EXPECT_TRUE(folder->remove("file"));
  EXPECT_FALSE(folder->remove("file"));
}

}  // namespace
}  // namespace platform
