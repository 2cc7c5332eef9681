#include "suite/brivel/help.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

TEST(HelpText, NamesEveryOption) {
  const std::string help = brivel::helpText();
  for (const char* option :
       {"-H, --bmc",         "--esxi",          "--local-root",
        "-u, --user",        "--password-file", "--password-stdin",
        "BRIVEL_PASSWORD",   "--cacert",        "--pin",
        "-k, --insecure",    "--timeout",       "--deadline",
        "--max-connections", "--thorough",      "--config",
        "--log-file",        "--log-level",     "--stats",
        "--device",          "--node",          "-h, --help",
        "--version"}) {
    EXPECT_NE(help.find(option), std::string::npos) << option;
  }
}

TEST(HelpText, FitsATerminal) {
  std::istringstream lines(brivel::helpText());
  for (std::string line; std::getline(lines, line);) {
    EXPECT_LE(line.size(), 80U) << line;
    EXPECT_TRUE(line.empty() || line.back() != ' ') << line;
  }
}

TEST(VersionText, NamesProgramAndVersion) {
  EXPECT_EQ(std::string(brivel::versionText()).rfind("brivel ", 0), 0U);
}

}  // namespace
