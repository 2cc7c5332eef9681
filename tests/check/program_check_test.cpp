// The built program as a plug-in, on controllers that do wrong: it is OK only
// of the one that was wholly read.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/bmc/control/controller.h"
#include "tests/support/child_process.h"
#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

struct End {
  int status = -1;
  std::string output;
};

// A server whose two events are ignored, so that nothing but what could not be
// read keeps it from being OK.
class ProgramCheck : public testing::Test {
 protected:
  // Starts the controller, with faults as its fault file has them.
  void start(const std::string& faults = "{}",
             const std::string& tree = SAMPLES "/rack-server") {
    const std::string file = home.write("faults.json", faults);
    controller = std::make_unique<bmc::Controller>(
        std::vector<std::string>{"--tree", tree, "--faults", file});
    ASSERT_TRUE(controller->running());
  }

  // Checks a target, with further options of check.
  End checkAt(const std::string& target,
              const std::vector<std::string>& more = {}) {
    support::ChildOptions options;
    options.program = BRIVEL_PROGRAM;
    options.environment = {"HOME=" + home.path().string(), "LC_ALL=C",
                           "BRIVEL_PASSWORD=" + password,
                           "BRIVEL_MODULES=" CHECK_MODULES};
    for (std::string& setting : support::sanitizerOptions()) {
      options.environment.push_back(std::move(setting));
    }
    options.arguments = {"--deadline", deadline, "--bmc", target};
    if (controller) {
      const std::string trusted =
          authority.empty() ? controller->ready().certificate : authority;
      options.arguments.insert(options.arguments.end(), {"--cacert", trusted});
    }
    options.arguments.insert(options.arguments.end(),
                             {"check", "--ignore", ignored});
    options.arguments.insert(options.arguments.end(), more.begin(), more.end());
    support::ChildProcess child(options);
    End end;
    end.status = child.wait().status;
    end.output = child.output();
    EXPECT_EQ(end.output.find(password), std::string::npos);
    return end;
  }

  End check(const std::vector<std::string>& more = {}) {
    return checkAt("https://admin@" + controller->https(), more);
  }

  // The answer to one path is not JSON.
  static std::string garbageAt(const std::string& path) {
    return R"({"rules": [{"match": {"method": "GET", "path": ")" + path +
           R"("}, "answer": {"status": 200, "body": "<html>no</html>"}}]})";
  }

  support::TempFolder home;
  std::string password = "Nothing-2-Hide";
  std::string ignored = "power,pci";
  std::string deadline = "60";
  std::string authority;  // Empty: the controller's own.
  std::unique_ptr<bmc::Controller> controller;
};

void expectUnknown(const End& end, const std::string& why) {
  EXPECT_EQ(end.status, 3) << end.output;
  EXPECT_THAT(end.output, StartsWith("BRIVEL UNKNOWN - "));
  EXPECT_THAT(end.output, HasSubstr(why));
}

TEST_F(ProgramCheck, IsOkOfAServerThatWasWhollyRead) {
  start();
  const End end = check();
  EXPECT_EQ(end.status, 0) << end.output;
  EXPECT_THAT(end.output,
              StartsWith("BRIVEL OK - no active events (2 ignored) | "
                         "errors=0;;;0 warnings=0;;;0 time="));
  const bmc::Counters counters = controller->counters();
  EXPECT_EQ(counters.sessionsCreated, 1U);
  EXPECT_EQ(counters.sessionsDeleted, 1U);
}

TEST_F(ProgramCheck, IsCriticalOfAnError) {
  start();
  ignored = "pci";
  const End end = check();
  EXPECT_EQ(end.status, 2) << end.output;
  EXPECT_THAT(end.output, StartsWith("BRIVEL CRITICAL - Power: Power Supply 2 "
                                     "has lost its input power."));
}

TEST_F(ProgramCheck, RefusedConnectionIsUnknown) {
  expectUnknown(checkAt("https://admin@127.0.0.1:1"),
                "the connection was refused");
}

TEST_F(ProgramCheck, HangingControllerIsUnknown) {
  start(R"({"connections": [{"numbers": "1-", "afterHandshake": "stall"}]})");
  deadline = "2";
  expectUnknown(check(), "in time");
}

TEST_F(ProgramCheck, WrongPasswordIsUnknown) {
  start();
  password = "Something-Else";
  expectUnknown(check(), "password");
  EXPECT_LE(controller->counters().loginsRefused, 1U);
}

TEST_F(ProgramCheck, CertificateThatIsNotTrustedIsUnknown) {
  start();
  const bmc::Controller other({"--tree", SAMPLES "/rack-server"});
  authority = other.ready().certificate;
  expectUnknown(check(), "certificate");
}

TEST_F(ProgramCheck, UnreadableSystemIsUnknown) {
  start(garbageAt("/redfish/v1/Systems/1"));
  expectUnknown(check(), "not JSON");
}

TEST_F(ProgramCheck, UnreadableListIsUnknown) {
  start(garbageAt("/redfish/v1/Chassis/1/ThermalSubsystem/Fans"));
  expectUnknown(check(), "fan: ");
}

TEST_F(ProgramCheck, UnreadablePartIsUnknown) {
  start(garbageAt("/redfish/v1/Chassis/1/ThermalSubsystem/Fans/5"));
  expectUnknown(check(), "fan: ");
}

TEST_F(ProgramCheck, EventsThatCannotBeReadAreUnknown) {
  start(garbageAt("/redfish/v1/Chassis/1/Thermal"), SAMPLES "/old-schema");
  ignored = "cooling";
  expectUnknown(check(), "health: ");
}

TEST_F(ProgramCheck, UnreadableNodeIsUnknown) {
  start(garbageAt("/redfish/v1/Systems/Node2"), SAMPLES "/two-node");
  ignored = "memory,cooling,power,pci,disks";
  expectUnknown(check(), "node 2");
}

TEST_F(ProgramCheck, BaselineIsSavedAndTellsWhatIsMissing) {
  start();
  const std::string file = home.at("baseline.json");
  EXPECT_EQ(check({"--save-baseline", file}).status, 0);
  const End same = check({"--baseline", file});
  EXPECT_EQ(same.status, 0) << same.output;

  // Another port, so another name: the settings keep it.
  std::string saved = support::fileText(file);
  start(R"({"tree": [{"path": "/redfish/v1/Systems/1/Memory",
                      "remove": ["/Members/0"]}]})");
  const std::string before = "\"target\":{\"name\":\"";
  const std::size_t begin = saved.find(before) + before.size();
  saved.replace(begin, saved.find('"', begin) - begin, controller->https());
  home.write("baseline.json", saved);
  const End end = check({"--baseline", file});
  EXPECT_EQ(end.status, 2) << end.output;
  EXPECT_THAT(end.output, HasSubstr("is missing (32768 MiB, serial number "));
}

TEST_F(ProgramCheck, BaselineIsNotSavedOfHalfAServer) {
  start(garbageAt("/redfish/v1/Chassis/1/ThermalSubsystem/Fans/5"));
  const std::string file = home.write("baseline.json", "old");
  const End end = check({"--save-baseline", file});
  expectUnknown(end, "--save-baseline: nothing is saved");
  EXPECT_EQ(support::fileText(file), "old");
}

TEST_F(ProgramCheck, BrokenBaselineIsUnknownAndAsksNobody) {
  start();
  const std::string file = home.write("baseline.json", "{\"schema\":");
  expectUnknown(check({"--baseline", file}), "is no baseline: line 1: ");
  EXPECT_EQ(controller->counters().requests, 0U);
}

}  // namespace
