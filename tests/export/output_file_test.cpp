#include "export/output_file.h"

#include <gtest/gtest.h>

#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace exporting {
namespace {

namespace fs = std::filesystem;

class OutputFileTest : public testing::Test {
 protected:
  std::size_t files() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder_.path()), {}));
  }

  support::TempFolder folder_;
  std::string error_;
};

TEST_F(OutputFileTest, ReplacesTheOldOneWhenItIsWhole) {
  const std::string path = folder_.write("report.prom", "old");
  fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write |
                            fs::perms::group_read);
  OutputFile file;
  ASSERT_TRUE(file.open(path, error_)) << error_;
  file.stream() << "new" << std::flush;
  EXPECT_EQ(support::fileText(path), "old");
  ASSERT_TRUE(file.commit(error_)) << error_;
  EXPECT_EQ(support::fileText(path), "new");
  EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read |
                                                fs::perms::owner_write |
                                                fs::perms::group_read);
  EXPECT_EQ(files(), 1);
}

TEST_F(OutputFileTest, WhatIsNotCommittedLeavesNothing) {
  const std::string path = folder_.write("report.prom", "old");
  {
    OutputFile file;
    ASSERT_TRUE(file.open(path, error_)) << error_;
    file.stream() << "half";
  }
  EXPECT_EQ(support::fileText(path), "old");
  EXPECT_EQ(files(), 1);
}

TEST_F(OutputFileTest, FollowsLinks) {
  const std::string path = folder_.write("real", "old");
  fs::create_symlink(path, folder_.at("link"));
  OutputFile file;
  ASSERT_TRUE(file.open(folder_.at("link"), error_)) << error_;
  file.stream() << "new";
  ASSERT_TRUE(file.commit(error_)) << error_;
  EXPECT_TRUE(fs::is_symlink(folder_.at("link")));
  EXPECT_EQ(support::fileText(path), "new");
}

TEST_F(OutputFileTest, RefusesWhatIsNoFile) {
  OutputFile file;
  EXPECT_FALSE(file.open(folder_.path().string(), error_));
  EXPECT_NE(error_.find("is no regular file"), std::string::npos) << error_;
  EXPECT_FALSE(OutputFile().open("/dev/null", error_));
  EXPECT_NE(error_.find("is no regular file"), std::string::npos) << error_;
}

TEST_F(OutputFileTest, SaysWhyThereIsNoFile) {
  OutputFile file;
  EXPECT_FALSE(file.open(folder_.at("none/report"), error_));
  EXPECT_NE(error_.find("cannot be written: No such file"), std::string::npos)
      << error_;
}

}  // namespace
}  // namespace exporting
