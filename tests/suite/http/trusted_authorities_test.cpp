#include "suite/http/curl/trusted_authorities.h"

#include <gtest/gtest.h>

#include "tests/support/temp_folder.h"

namespace http {
namespace {

TEST(IsHashedDirectory, OneHashedNameIsEnough) {
  const support::TempFolder directory;
  directory.write("authorities.crt", "");
  directory.write("1a2b3c4d.0", "");
  EXPECT_TRUE(isHashedDirectory(directory.path().string()));
}

TEST(IsHashedDirectory, OtherNamesAreNone) {
  const support::TempFolder directory;
  for (const char* name : {"authorities.crt", "1a2b3c4d", "1a2b3c4d.r0",
                           "1a2b3c4g.0", "1a2b3c4d5.0", "1A2B3C4D.0"}) {
    directory.write(name, "");
  }
  EXPECT_FALSE(isHashedDirectory(directory.path().string()));
}

TEST(IsHashedDirectory, MissingDirectoryIsNone) {
  const support::TempFolder directory;
  EXPECT_FALSE(isHashedDirectory((directory.path() / "no").string()));
}

}  // namespace
}  // namespace http
