#include "suite/local/facts/root.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "tests/suite/local/folder.h"
#include "tests/support/ordinary_user.h"

namespace local {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Root, RunningMachineIsNotRecorded) {
  EXPECT_FALSE(Root().recorded());
  EXPECT_FALSE(Root("/").recorded());
  EXPECT_FALSE(Root("").recorded());
  EXPECT_EQ(Root().path("/sys/class"), "/sys/class");
}

TEST(Root, TrailingSlashIsNoMatter) {
  EXPECT_EQ(Root("/tmp/machine//").path("/sys"), "/tmp/machine/sys");
}

TEST(RootRead, GivesTheBytes) {
  Folder folder;
  folder.file("/sys/a", std::string("x\0y\n", 4));
  const Content content = folder.root().read("/sys/a", 100);
  EXPECT_EQ(content.access, Access::kRead);
  EXPECT_EQ(content.bytes, std::string("x\0y\n", 4));
}

TEST(RootRead, MissingFileIsMissing) {
  const Folder folder;
  EXPECT_EQ(folder.root().read("/sys/a", 100).access, Access::kMissing);
  EXPECT_EQ(Root("/nowhere").read("/sys/a", 100).access, Access::kMissing);
}

TEST(RootRead, FileThatMayNotBeReadIsDenied) {
  if (!support::OrdinaryUser::possible()) {
    GTEST_SKIP() << "this machine knows no user but root";
  }
  Folder folder;
  folder.file("/sys/a", "secret");
  chmod(folder.path().c_str(), 0755);
  chmod((folder.path() + "/sys/a").c_str(), 0);
  const support::OrdinaryUser user;
  EXPECT_EQ(folder.root().read("/sys/a", 100).access, Access::kDenied);
}

TEST(RootRead, LongerThanTheLimitFails) {
  Folder folder;
  folder.file("/sys/a", std::string(101, 'x'));
  const Content content = folder.root().read("/sys/a", 100);
  EXPECT_EQ(content.access, Access::kFailed);
  EXPECT_EQ(content.bytes, "");
}

TEST(RootRead, FoldersAndPipesFail) {
  Folder folder;
  folder.folder("/sys/folder");
  ASSERT_EQ(mkfifo((folder.path() + "/sys/pipe").c_str(), 0600), 0);
  EXPECT_EQ(folder.root().read("/sys/folder", 100).access, Access::kFailed);
  EXPECT_EQ(folder.root().read("/sys/pipe", 100).access, Access::kFailed);
}

TEST(RootRead, LinkInsideTheFolderIsFollowed) {
  Folder folder;
  folder.file("/sys/devices/a/name", "chip\n");
  folder.link("/sys/class/a", "../devices/a");
  EXPECT_EQ(folder.root().line("/sys/class/a/name"), "chip");
}

TEST(RootRead, LinkOutOfTheFolderIsNot) {
  Folder outside;
  outside.file("/secret", "secret");
  Folder folder;
  folder.link("/sys/a", outside.path() + "/secret");
  folder.link("/sys/b", outside.path());
  const Root root = folder.root();
  EXPECT_EQ(root.read("/sys/a", 100).access, Access::kMissing);
  EXPECT_EQ(root.read("/sys/b/secret", 100).access, Access::kMissing);
  EXPECT_THAT(root.list("/sys/b"), IsEmpty());
  EXPECT_FALSE(root.exists("/sys/a"));
}

TEST(RootRead, FolderWhoseNameStartsAlikeIsOutside) {
  Folder folder;
  folder.file("/machine-2/secret", "secret");
  folder.link("/machine/sys/a", "../../machine-2/secret");
  const Root root(folder.path() + "/machine");
  EXPECT_EQ(root.read("/sys/a", 100).access, Access::kMissing);
}

TEST(RootLine, DropsLineEndAndBlanks) {
  Folder folder;
  folder.file("/a", "  some text \nmore\n").file("/b", "").file("/c", " \n");
  EXPECT_EQ(folder.root().line("/a"), "some text");
  EXPECT_EQ(folder.root().line("/b"), "");
  EXPECT_EQ(folder.root().line("/c"), "");
  EXPECT_EQ(folder.root().line("/missing"), "");
}

TEST(RootList, IsSorted) {
  Folder folder;
  folder.file("/a/c", "").file("/a/b", "").folder("/a/d");
  EXPECT_THAT(folder.root().list("/a"), ElementsAre("b", "c", "d"));
  EXPECT_THAT(folder.root().list("/missing"), IsEmpty());
}

TEST(RootLink, GivesTheTargetAsItStands) {
  Folder folder;
  folder.link("/a", "../x/y").file("/b", "");
  EXPECT_EQ(folder.root().link("/a"), "../x/y");
  EXPECT_EQ(folder.root().link("/b"), "");
}

}  // namespace
}  // namespace local
