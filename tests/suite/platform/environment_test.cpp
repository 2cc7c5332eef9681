#include "suite/platform/environment.h"

#include <gtest/gtest.h>
#include <sys/auxv.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <iostream>
#include <string>

#include "tests/support/child_process.h"
#include "tests/support/temp_folder.h"

namespace {

namespace fs = std::filesystem;

// What the case below has run, with rights that are not its own.
TEST(Environment, DISABLED_Child) {
  std::cout << "secure " << getauxval(AT_SECURE) << " home '"
            << platform::environmentValue("HOME") << "'" << std::endl;
}

TEST(Environment, IsNotBelievedWithBorrowedRights) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "only root can lend rights of a group";
  }
  const support::TempFolder folder;
  support::ChildOptions options;
  options.program = folder.at("program");
  fs::copy_file("/proc/self/exe", options.program);
  ASSERT_EQ(chown(options.program.c_str(), 0, 1234), 0);
  ASSERT_EQ(chmod(options.program.c_str(), 02755), 0);
  options.arguments = {"--gtest_filter=Environment.DISABLED_Child",
                       "--gtest_also_run_disabled_tests"};
  options.environment = {"HOME=/home/eve"};
  for (std::string& setting : support::sanitizerOptions()) {
    options.environment.push_back(std::move(setting));
  }
  support::ChildProcess child(options);
  child.wait();
  if (child.output().find("secure 0") != std::string::npos) {
    GTEST_SKIP() << "the temporary folder lends no rights (nosuid)";
  }
  EXPECT_NE(child.output().find("secure 1 home ''"), std::string::npos)
      << child.output() << child.errors();
}

}  // namespace
