// The whole program on a system whose clock jumps in the midst of a run, or
// whose name server hangs.

#include <string>
#include <vector>

#include "tests/bmc/control/controller.h"
#include "tests/suite/brivel/program_fixture.h"

namespace {

constexpr const char* kHoursOn = "BRIVEL_CLOCK_JUMP=18000";
constexpr const char* kHoursBack = "BRIVEL_CLOCK_JUMP=-18000";

class ProgramOddSystem : public ProgramFixture {
 protected:
  void SetUp() override {
    useModules(HEALTH_MODULES);
    options.environment.emplace_back("BRIVEL_PASSWORD=Nothing-2-Hide");
    plain_ = options.environment;
  }

  // From here on: the system has these oddities, "NAME=value" each.
  void setOddities(const std::vector<std::string>& oddities) {
    options.environment = plain_;
    options.environment.emplace_back("LD_PRELOAD=" ODD_SYSTEM);
    options.environment.insert(options.environment.end(), oddities.begin(),
                               oddities.end());
  }

  // A controller with faults.
  std::vector<std::string> controllerWith(const std::string& rules) const {
    home.write("faults.json", R"({"rules": [)" + rules + "]}");
    return {"--tree", SAMPLES "/rack-server", "--faults",
            home.at("faults.json")};
  }

  // The arguments of a run against a controller that is asked for by name, and
  // known by its key: a certificate has dates.
  static std::vector<std::string> target(const bmc::Controller& controller,
                                         std::vector<std::string> more) {
    const std::string address = controller.https();
    std::vector<std::string> all = {
        "--bmc",  "controller.example" + address.substr(address.rfind(':')),
        "--user", "admin",
        "--pin",  controller.ready().pin};
    all.insert(all.end(), more.begin(), more.end());
    return all;
  }

 private:
  std::vector<std::string> plain_;
};

// It is looked at for each line of the log, among others.
TEST_F(ProgramOddSystem, ClockThatJumpsChangesNothing) {
  const bmc::Controller controller(controllerWith(""));
  ASSERT_TRUE(controller.running());
  const auto arguments = target(controller, {"syshealth", "--device", "all"});
  setOddities({});
  const ProgramEnd usual = run(arguments);
  ASSERT_EQ(usual.status, 0) << usual.errors;
  for (const char* const jump : {kHoursOn, kHoursBack}) {
    for (const char* const after : {"1", "4", "16", "64"}) {
      SCOPED_TRACE(std::string(jump) + " after " + after);
      setOddities({jump, std::string("BRIVEL_CLOCK_AFTER=") + after});
      const ProgramEnd end = run(arguments);
      EXPECT_EQ(end.status, 0);
      EXPECT_EQ(end.output, usual.output);
      EXPECT_EQ(end.errors, usual.errors);
      EXPECT_EQ(controller.counters().sessionsOpen, 0U);
    }
  }
}

// Where it were the clock of the deadline, the run would end hours later, or
// with nothing read at all.
TEST_F(ProgramOddSystem, ClockThatJumpsLeavesTheDeadline) {
  const bmc::Controller controller(
      controllerWith(R"({"match": {"path": "/redfish/v1/Systems"},
                         "delivery": {"silent": true}})"));
  ASSERT_TRUE(controller.running());
  const auto arguments =
      target(controller, {"--deadline", "2", "syshealth", "--device", "dimm"});
  for (const char* const jump : {kHoursOn, kHoursBack}) {
    SCOPED_TRACE(jump);
    setOddities({jump, "BRIVEL_CLOCK_AFTER=12"});
    const ProgramEnd end = run(arguments);
    EXPECT_EQ(end.status, 10);
    EXPECT_NE(end.errors.find("time is up"), std::string::npos) << end.errors;
    EXPECT_EQ(controller.counters().sessionsOpen, 0U);
  }
}

// With a connection for each request, the last of which is the logout.
TEST_F(ProgramOddSystem, NameIsSearchedForOnce) {
  const bmc::Controller controller(
      controllerWith(R"({"delivery": {"ending": "close"}})"));
  ASSERT_TRUE(controller.running());
  setOddities({kHoursOn, "BRIVEL_CLOCK_AFTER=12", "BRIVEL_NAMES_FOUND=1"});
  const ProgramEnd end =
      run(target(controller, {"syshealth", "--device", "dimm"}));
  EXPECT_EQ(end.status, 0) << end.errors;
  EXPECT_EQ(controller.counters().sessionsCreated, 1U);
  EXPECT_EQ(controller.counters().sessionsOpen, 0U);
}

TEST_F(ProgramOddSystem, NameServerThatHangsEndsAtTheDeadline) {
  const bmc::Controller controller(controllerWith(""));
  ASSERT_TRUE(controller.running());
  setOddities({"BRIVEL_NAMES_FOUND=0"});
  const ProgramEnd end =
      run(target(controller, {"--deadline", "2", "syshealth"}));
  EXPECT_EQ(end.status, 18);
  EXPECT_FALSE(end.errors.empty());
}

}  // namespace
