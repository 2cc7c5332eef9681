#include "suite/connection/in_band.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <optional>
#include <string>
#include <vector>

#include "suite/connection/connections.h"
#include "suite/local/machine.h"
#include "suite/redfish/crawl/selection.h"
#include "suite/run/run.h"
#include "syshealth/host/connect_info.h"
#include "tests/suite/local/folder.h"
#include "tests/suite/local/host_interface_builder.h"
#include "tests/support/ordinary_user.h"

namespace connection {
namespace {

using base::FailureKind;
using local::Access;
using local::Folder;
using local::Machine;
using local::Structure;
using Tarvex::TarvexConnection::ConnectionInfo;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr char kTable[] = "/sys/firmware/dmi/tables/DMI";

void addTable(Folder& folder, const std::vector<Structure>& structures) {
  folder.file(kTable, local::tableOf(structures));
}

Structure usbController() {
  return local::hostInterface(local::usbDevice(1, 2), {local::serviceRecord()});
}

// A run of this machine's own parts, in the shape of a recorded one.
class OwnMachine {
 public:
  explicit OwnMachine(const std::string& root, RunHints hints = {})
      : run_(kConnectModeInBand, std::nullopt, std::nullopt, hints,
             optionsOf(root)) {}

  int tryTarget() { return run_.tryTarget(info_); }
  int listTargets() { return run_.listTargets(list_); }

  const std::vector<ConnectionInfo>& list() const { return list_; }
  const Connections& run() const { return run_; }

 private:
  static InBandOptions optionsOf(const std::string& root) {
    InBandOptions options;
    options.root = root;
    return options;
  }

  Connections run_;
  ConnectionInfo info_;
  std::vector<ConnectionInfo> list_;
};

TEST(InBandWithoutController, NothingAtAllFailsAndSaysWhatWasLookedFor) {
  const Folder folder;
  OwnMachine machine(folder.path());
  EXPECT_EQ(machine.tryTarget(), 26);
  EXPECT_THAT(machine.run().cause(), HasSubstr("no SMBIOS at all"));
  EXPECT_THAT(machine.run().cause(), HasSubstr("no IPMI device (/dev/ipmi0)"));
  EXPECT_THAT(machine.run().cause(), HasSubstr("[inband]"));
  EXPECT_THAT(machine.run().cause(), HasSubstr("--bmc"));
  EXPECT_EQ(machine.listTargets(), 26);
  EXPECT_THAT(machine.list(), IsEmpty());
  EXPECT_THAT(machine.run().notices(), IsEmpty());
}

TEST(InBandWithoutController, MachineItselfIsTheTarget) {
  OwnMachine machine(SAMPLES "/local-server");
  EXPECT_EQ(machine.tryTarget(), 26);
  EXPECT_EQ(machine.listTargets(), 0);
  ASSERT_THAT(machine.list(), SizeIs(1));
  EXPECT_EQ(machine.list()[0].service, run::kThisMachine);
  EXPECT_EQ(machine.list()[0].nodeIndex, 0);
  ASSERT_NE(run::Run::current()->machine(), nullptr);
  EXPECT_EQ(run::Run::current()->machine()->system().product, "RX 7200");
  EXPECT_THAT(machine.run().notices(), IsEmpty());
}

TEST(InBandWithoutController, MachineGoesWithTheRun) {
  { OwnMachine machine(SAMPLES "/local-server"); }
  EXPECT_EQ(run::Run::current(), nullptr);
}

TEST(InBandWithoutController, TableOfRootAloneIsNamedWithTheRemedy) {
  if (!support::OrdinaryUser::possible()) {
    GTEST_SKIP() << "this machine knows no user but root";
  }
  Folder folder;
  addTable(folder, {Structure(1, 0x1B)});
  folder.file("/sys/class/dmi/id/product_name", "RX\n");
  chmod((folder.path() + kTable).c_str(), 0);
  chmod(folder.path().c_str(), 0755);
  const support::OrdinaryUser user;
  OwnMachine machine(folder.path());
  EXPECT_EQ(machine.tryTarget(), 30);
  EXPECT_THAT(machine.run().cause(), HasSubstr(kTable));
  EXPECT_THAT(machine.run().cause(), HasSubstr("run brivel as root"));
  EXPECT_EQ(machine.listTargets(), 0);
  EXPECT_EQ(machine.listTargets(), 0);
  EXPECT_THAT(machine.run().notices(), ElementsAre(HasSubstr(kTable)));
}

TEST(InBandWithoutController, PartsOfTheTableAloneNeedRoot) {
  if (!support::OrdinaryUser::possible()) {
    GTEST_SKIP() << "this machine knows no user but root";
  }
  Folder folder;
  addTable(folder, {Structure(1, 0x1B)});
  chmod((folder.path() + kTable).c_str(), 0);
  chmod(folder.path().c_str(), 0755);
  const support::OrdinaryUser user;
  RunHints hints;
  hints.wants = redfish::kWantDimms | redfish::kWantPowers;
  OwnMachine machine(folder.path(), hints);
  EXPECT_EQ(machine.listTargets(), 30);
  EXPECT_THAT(machine.list(), IsEmpty());
  EXPECT_THAT(machine.run().cause(), HasSubstr(kTable));
  EXPECT_THAT(machine.run().cause(), HasSubstr("run brivel as root"));
}

TEST(InBandWithoutController, IpmiDeviceThatIsNoneIsTold) {
  Folder folder;
  addTable(folder, {Structure(1, 0x1B)});
  folder.file("/dev/ipmi0", "");
  OwnMachine machine(folder.path());
  EXPECT_EQ(machine.tryTarget(), 50);
  EXPECT_THAT(machine.run().cause(), HasSubstr("/dev/ipmi0 does not answer"));
}

TEST(FindControllers, ThoseOfARecordedMachineAreNotAsked) {
  Folder folder;
  addTable(folder, {usbController()});
  Machine machine(folder.root());
  const FoundControllers found = findControllers(machine, {});
  EXPECT_THAT(found.controllers, IsEmpty());
  ASSERT_TRUE(found.failure);
  EXPECT_EQ(found.failure->kind, FailureKind::kNoHostInterface);
  EXPECT_THAT(found.failure->cause, HasSubstr("recorded machine"));
  EXPECT_FALSE(found.pathBlocked);
}

TEST(FindControllers, SilentFirmwareIsTold) {
  Folder folder;
  addTable(folder, {Structure(1, 0x1B)});
  Machine machine(folder.root());
  const FoundControllers found = findControllers(machine, {});
  ASSERT_TRUE(found.failure);
  EXPECT_EQ(found.failure->kind, FailureKind::kNoHostInterface);
  EXPECT_THAT(found.failure->cause, HasSubstr("names no Redfish host"));
}

TEST(FindControllers, TableThatCannotBeReadIsTold) {
  Folder folder;
  folder.folder(kTable);
  Machine machine(folder.root());
  const FoundControllers found = findControllers(machine, {});
  ASSERT_TRUE(found.failure);
  EXPECT_EQ(found.failure->kind, FailureKind::kFileUnreadable);
}

base::Failure silence() {
  base::Failure failure;
  failure.kind = FailureKind::kNoHostInterface;
  failure.cause = "nothing";
  return failure;
}

TEST(WithIpmi, MissingDeviceIsAddedToWhatWasLookedFor) {
  const auto failure =
      withIpmi(silence(), {Access::kMissing, "/dev/ipmi0", std::nullopt});
  EXPECT_EQ(failure.kind, FailureKind::kNoHostInterface);
  EXPECT_EQ(failure.cause, "nothing, and there is no IPMI device (/dev/ipmi0)");
}

TEST(WithIpmi, DeviceOfRootAloneIsNamedWithTheRemedy) {
  const auto failure =
      withIpmi(silence(), {Access::kDenied, "/dev/ipmi0", std::nullopt});
  EXPECT_EQ(failure.kind, FailureKind::kNotPermitted);
  EXPECT_EQ(failure.remedy, "run brivel as root");
}

TEST(WithIpmi, OtherFailuresStay) {
  base::Failure failure = silence();
  failure.kind = FailureKind::kNotPermitted;
  failure = withIpmi(failure, {Access::kMissing, "/dev/ipmi0", std::nullopt});
  EXPECT_EQ(failure.cause, "nothing");
}

}  // namespace
}  // namespace connection
