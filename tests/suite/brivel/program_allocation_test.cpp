// The whole program on a machine that has no memory for one of its
// allocations. BRIVEL_DENY_STEP=1 tries each of them, which takes an hour.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/bmc/control/controller.h"
#include "tests/suite/brivel/program_fixture.h"
#include "tests/support/file_text.h"

namespace {

constexpr int kUsage = 2;
constexpr long kTried = 60;  // Of one kind of run.

class ProgramAllocation : public ProgramFixture {
 protected:
  void SetUp() override {
    useModules(HEALTH_MODULES);
    options.environment.emplace_back("LD_PRELOAD=" DENIED_MEMORY);
    options.environment.emplace_back("BRIVEL_PASSWORD=Nothing-2-Hide");
    options.environment.emplace_back("BRIVEL_DENY_COUNT=" + home.at("count"));
    options.environment.emplace_back("BRIVEL_DENY_AT=0");
  }

  ProgramEnd runDenied(long allocation,
                       const std::vector<std::string>& arguments) {
    options.environment.back() = "BRIVEL_DENY_AT=" + std::to_string(allocation);
    return run(arguments);
  }

  // How many allocations a run makes; fails the test where it does not end
  // well.
  long countOf(const std::vector<std::string>& arguments) {
    EXPECT_EQ(runDenied(0, arguments).status, 0);
    return std::strtol(support::fileText(home.at("count")).c_str(), nullptr,
                       10);
  }

  // Runs it with one allocation denied, and looks at its end.
  ProgramEnd endInOrder(long denied,
                        const std::vector<std::string>& arguments) {
    SCOPED_TRACE("allocation " + std::to_string(denied));
    std::filesystem::remove(logPath());
    ProgramEnd end = runDenied(denied, arguments);
    EXPECT_LT(end.status, kSignalled) << end.errors;
    EXPECT_NE(end.status, kUsage) << end.errors;
    EXPECT_TRUE(end.status == 0 || !end.errors.empty());
    return end;
  }

  // Runs it with one allocation after another denied, some steps apart, and
  // looks at each end.
  template <typename Look>
  void denyInTurn(const std::vector<std::string>& arguments, Look look) {
    const long count = countOf(arguments);
    ASSERT_GT(count, kTried);
    const char* const wanted = std::getenv("BRIVEL_DENY_STEP");
    const long step = wanted == nullptr
                          ? count / kTried
                          : std::max(std::strtol(wanted, nullptr, 10), 1L);
    for (long at = 1; at <= count; at += step) {
      look(endInOrder(at, arguments));
    }
  }
};

TEST_F(ProgramAllocation, DeniedToARecordedServerEndsInOrder) {
  denyInTurn(
      {"--bmc", "file:" SAMPLES "/rack-server", "syshealth", "--device", "all"},
      [](const ProgramEnd&) {});
}

// A destructor writes the line, and may throw nothing.
TEST_F(ProgramAllocation, DeniedWhileALineIsPrintedEndsInOrder) {
  const std::vector<std::string> arguments = {
      "--bmc", "file:" SAMPLES "/rack-server", "syshealth", "--device", "dimm"};
  const long count = countOf(arguments);
  constexpr long kBeforeTheEnd = 100;
  constexpr long kOfTwoLines = 16;
  for (long at = count - kBeforeTheEnd;
       at < count - kBeforeTheEnd + kOfTwoLines; ++at) {
    endInOrder(at, arguments);
  }
}

TEST_F(ProgramAllocation, DeniedToALiveRunLeavesNoSessionUntold) {
  const bmc::Controller controller({"--tree", SAMPLES "/rack-server"});
  ASSERT_TRUE(controller.running());
  std::uint64_t left = 0;
  denyInTurn({"--bmc", controller.https(), "--user", "admin", "--cacert",
              controller.ready().certificate, "syshealth", "--device", "dimm"},
             [&](const ProgramEnd& end) {
               const std::string written = end.output + end.errors + log();
               EXPECT_EQ(written.find("Nothing-2-Hide"), std::string::npos);
               const std::uint64_t open = controller.counters().sessionsOpen;
               if (written.find("until it times out") == std::string::npos) {
                 EXPECT_EQ(open, left) << written;
               }
               left = open;
             });
}

}  // namespace
