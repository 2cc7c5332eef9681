// The library of the network's transport: which runs load it, and what is said
// where it is missing.

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/suite/brivel/program_fixture.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kRecorded = "file:" SAMPLES "/rack-server";
constexpr const char* kRefusedAddress =
    "https://127.0.0.1:1";  // Refused at once.
// Reaches for the service, and prints what came of it.
constexpr const char* kReach = "301";

class ProgramLibrary : public ProgramFixture {
 protected:
  // What the system's loader tells of a run.
  std::string loaded(const std::string& target) {
    options.environment.emplace_back("LD_DEBUG=libs");
    return run({"--bmc", target, "sample", kReach}).errors;
  }

  // Where libcurl looks for a symbol first, in a run over the network: a list
  // of libraries.
  std::string firstPlaces() {
    options.environment.emplace_back("LD_DEBUG=scopes");
    const std::string told =
        run({"--bmc", kRefusedAddress, "sample", kReach}).errors;
    const std::size_t begin =
        told.find("scope 0:", told.find("/libcurl.so.4 [0]"));
    return begin == std::string::npos
               ? ""
               : told.substr(begin, told.find('\n', begin) - begin);
  }

  // Copies the program into a tree of its own, without the library.
  void copyWithoutLibrary() {
    const fs::path program = BRIVEL_PROGRAM;
    const fs::path copy = home.at("copy");
    fs::create_directories(copy / "bin");
    fs::create_directories(copy / "lib");
    fs::copy(program, copy / "bin/brivel");
    fs::copy(program.parent_path() / "../lib/libbrivel.so",
             copy / "lib/libbrivel.so");
    options.program = copy / "bin/brivel";
  }
};

TEST_F(ProgramLibrary, IsLoadedForTheNetwork) {
  const std::string libraries = loaded(kRefusedAddress);
  EXPECT_NE(libraries.find("libbrivel-http.so"), std::string::npos);
  EXPECT_NE(libraries.find("libcurl.so"), std::string::npos);
}

TEST_F(ProgramLibrary, IsNotLoadedForARecordedServer) {
  const std::string libraries = loaded(kRecorded);
  EXPECT_NE(libraries.find("libbrivel.so"), std::string::npos);
  EXPECT_EQ(libraries.find("libbrivel-http.so"), std::string::npos);
  EXPECT_EQ(libraries.find("libcurl.so"), std::string::npos);
  EXPECT_EQ(libraries.find("libssl.so"), std::string::npos);
}

#ifndef SYSHEALTH_SANITIZED  // A sanitizer's functions come first.

TEST_F(ProgramLibrary, FindsSymbolsAmongItsOwnLibrariesFirst) {
  EXPECT_NE(firstPlaces().find("libbrivel-http.so"), std::string::npos);
}

TEST_F(ProgramLibrary, FindsWhatWasPreloadedFirst) {
  options.environment.emplace_back("LD_PRELOAD=" DENIED_MEMORY);
  const std::string places = firstPlaces();
  EXPECT_NE(places.find(DENIED_MEMORY), std::string::npos);
  EXPECT_EQ(places.find("libbrivel-http.so"), std::string::npos);
}

#endif

TEST_F(ProgramLibrary, IsNamedWhereItIsMissing) {
  copyWithoutLibrary();
  const ProgramEnd end = run({"--bmc", kRefusedAddress, "sample", kReach});
  EXPECT_EQ(end.status, 17);
  EXPECT_NE(end.errors.find("/lib/libbrivel-http.so cannot be loaded: cannot "
                            "open shared object file: No such file or "
                            "directory; install brivel again"),
            std::string::npos)
      << end.errors;
}

TEST_F(ProgramLibrary, IsNotMissedByARecordedServer) {
  copyWithoutLibrary();
  const ProgramEnd end = run({"--bmc", kRecorded, "sample", kReach});
  EXPECT_EQ(end.status, 0) << end.errors;
}

}  // namespace
