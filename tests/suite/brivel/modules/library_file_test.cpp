#include "suite/brivel/modules/library_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <string>

#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace {

using brivel::problemWithLibrary;

class LibraryFile : public testing::Test {
 protected:
  static std::string sound() { return SAMPLE_MODULE; }

  static std::string bytesOf(const std::string& file) {
    return support::fileText(file);
  }

  support::TempFolder directory_;
};

TEST_F(LibraryFile, SoundLibraryHasNoObjection) {
  EXPECT_EQ(problemWithLibrary(sound()), "");
}

TEST_F(LibraryFile, MissingFileIsTold) {
  EXPECT_EQ(problemWithLibrary(directory_.at("none.so")),
            "it cannot be read: No such file or directory");
}

TEST_F(LibraryFile, TextIsNoLibrary) {
  EXPECT_EQ(problemWithLibrary(directory_.write("a.so", "#!/bin/sh\n")),
            "it is no library");
}

TEST_F(LibraryFile, EmptyFileIsNoLibrary) {
  EXPECT_EQ(problemWithLibrary(directory_.write("a.so", "")),
            "it is no library");
}

TEST_F(LibraryFile, DirectoryIsNoLibrary) {
  EXPECT_NE(problemWithLibrary(directory_.path().string()), "");
}

TEST_F(LibraryFile, CutLibraryIsToldAtEveryLength) {
  const std::string whole = bytesOf(sound());
  for (std::size_t length = 4; length < whole.size();
       length += 1 + whole.size() / 97) {
    EXPECT_EQ(
        problemWithLibrary(directory_.write("a.so", whole.substr(0, length))),
        "it is truncated")
        << length << " of " << whole.size();
  }
}

TEST_F(LibraryFile, LibraryOfAnotherMachineIsTold) {
  std::string bytes = bytesOf(sound());
  bytes[18] = 0x28;  // e_machine: a 32-bit ARM.
  bytes[19] = 0;
  EXPECT_EQ(problemWithLibrary(directory_.write("a.so", bytes)),
            "it is made for another kind of machine");
}

TEST_F(LibraryFile, ObjectFileIsNoSharedLibrary) {
  std::string bytes = bytesOf(sound());
  bytes[16] = 1;  // e_type: relocatable.
  EXPECT_EQ(problemWithLibrary(directory_.write("a.so", bytes)),
            "it is no shared library");
}

TEST_F(LibraryFile, ImpossibleTablesAreTold) {
  std::string bytes = bytesOf(sound());
  bytes.replace(32, 8, 8, '\xFF');  // e_phoff.
  EXPECT_EQ(problemWithLibrary(directory_.write("a.so", bytes)),
            "it is truncated");
}

}  // namespace
