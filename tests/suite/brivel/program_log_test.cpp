#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "tests/suite/brivel/program_fixture.h"
#include "tests/support/file_text.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kFull = std::size_t{4} << 20U;  // Where logs are rotated.

// Runs of the health application that share a log.
class SharedLog : public ProgramFixture {
 protected:
  void SetUp() override { useModules(HEALTH_MODULES); }

  std::vector<std::string> arguments(const std::string& log) const {
    return {"--bmc",       "file:" SAMPLES "/rack-server",
            "--log-file",  log,
            "--log-level", "4",
            "syshealth",   "--device",
            "all"};
  }

  static std::size_t lines(const std::string& file) {
    const std::string text = support::fileText(file);
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
  }
};

TEST_F(SharedLog, SixtyRunsAcrossTheBorderLoseNoLine) {
  constexpr std::size_t kRuns = 60;
  const std::string alone = home.at("alone.log");
  ASSERT_EQ(run(arguments(alone)).status, 0);
  const std::size_t linesOfOne = lines(alone);
  ASSERT_GT(linesOfOne, 20U);

  // The older files, and a log that the first few runs fill up.
  const std::string log = home.at("a.log");
  for (const char* older : {"a.1.log", "a.2.log"}) {
    std::ofstream(home.at(older)) << older << "\n";
  }
  const std::string before(1023, 'x');
  std::ofstream file(log);
  for (std::size_t size = 0; size + 5 * fs::file_size(alone) < kFull;
       size += before.size() + 1) {
    file << before << "\n";
  }
  file.close();
  fs::permissions(log, fs::perms::owner_read | fs::perms::owner_write);
  const std::size_t linesBefore = lines(log);

  std::vector<std::unique_ptr<support::ChildProcess>> runs;
  for (std::size_t index = 0; index < kRuns; ++index) {
    runs.push_back(
        std::make_unique<support::ChildProcess>(started(arguments(log))));
  }
  for (const auto& child : runs) {
    EXPECT_EQ(child->wait().status, 0);
  }
  EXPECT_EQ(lines(log) + lines(home.at("a.1.log")),
            linesBefore + kRuns * linesOfOne);
  EXPECT_EQ(support::fileText(home.at("a.2.log")), "a.1.log\n");
  EXPECT_EQ(support::fileText(home.at("a.3.log")), "a.2.log\n");
}

TEST_F(SharedLog, NoneMeansNoLog) {
  options.directory = home.path();
  EXPECT_EQ(run(arguments("none")).status, 0);
  EXPECT_FALSE(fs::exists(home.at("none")));
  EXPECT_FALSE(fs::exists(logPath()));
  writeSettings("[defaults]\nlog-file = 'none'\n");
  EXPECT_EQ(run({"--bmc", "file:" SAMPLES "/rack-server", "syshealth"}).status,
            0);
  EXPECT_FALSE(fs::exists(home.at(".config/brivel/none")));
  EXPECT_FALSE(fs::exists(logPath()));
}

}  // namespace
