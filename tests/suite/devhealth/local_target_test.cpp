#include "suite/devhealth/local_target.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <memory>
#include <string>
#include <vector>

#include "suite/run/run.h"
#include "syshealth/health/dev_health.h"
#include "syshealth/health/orvane_type.h"
#include "tests/suite/local/folder.h"
#include "tests/suite/local/table_builder.h"
#include "tests/support/ordinary_user.h"

namespace devhealth {
namespace {

using local::Folder;
using local::Structure;
using Tarvex::DeviceHealth::DevHealth;
using Tarvex::TarvexConnection::ConnectionInfo;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr char kTable[] = "/sys/firmware/dmi/tables/DMI";

// The machine of a run in a folder, and a client for it.
class OwnMachine : public testing::Test {
 protected:
  DevHealth& client() {
    if (!client_) {
      run_.setMachine(std::make_unique<local::Machine>(folder_.root()));
      ConnectionInfo info;
      info.service = run::kThisMachine;
      client_ = std::make_unique<DevHealth>(info);
    }
    return *client_;
  }

  void addTable(const std::vector<Structure>& structures) {
    folder_.file(kTable, local::tableOf(structures));
  }

  std::string cause() const {
    const auto& failure = run_.lastFailure();
    return failure ? describe(*failure) : "";
  }

  Folder folder_;
  run::Run run_;
  std::unique_ptr<DevHealth> client_;
};

using LocalTargetTest = OwnMachine;

TEST_F(LocalTargetTest, ReadsEveryTable) {
  addTable({Structure(1, 0x1B).text(4, "Halvorn").text(5, "RX"),
            Structure(4, 0x30).byte(5, 3).byte(0x18, 0x41),
            Structure(17, 0x28).word(0x0C, 1024),
            Structure(39, 0x16).text(0x06, "PSU").word(0x0E, 2)});
  folder_.file("/sys/class/hwmon/hwmon0/name", "chip\n")
      .file("/sys/class/hwmon/hwmon0/fan1_input", "900\n")
      .file("/sys/bus/pci/devices/0000:3b:00.0/class", "0x020000\n");
  Tarvex::DeviceHealth::SystemBoard system;
  std::vector<Tarvex::DeviceHealth::Processor> processors;
  std::vector<Tarvex::DeviceHealth::Fan> fans;
  std::vector<Tarvex::DeviceHealth::DIMM> dimms;
  std::vector<Tarvex::DeviceHealth::Power> powers;
  std::vector<Tarvex::DeviceHealth::PCIAdapter> adapters;
  EXPECT_EQ(client().connect(), 0);
  EXPECT_EQ(client().get_system(system), 0);
  EXPECT_EQ(client().get_processors(processors), 0);
  EXPECT_EQ(client().get_fans(fans), 0);
  EXPECT_EQ(client().get_DIMMs(dimms), 0);
  EXPECT_EQ(client().get_Powers(powers), 0);
  EXPECT_EQ(client().get_PCIApaters(adapters), 0);
  EXPECT_EQ(system.machineName, "Halvorn RX");
  EXPECT_THAT(processors, SizeIs(1));
  EXPECT_THAT(fans, SizeIs(1));
  EXPECT_THAT(dimms, SizeIs(1));
  EXPECT_THAT(powers, SizeIs(1));
  EXPECT_THAT(adapters, SizeIs(1));
  EXPECT_EQ(cause(), "");
}

TEST_F(LocalTargetTest, PlacesForModulesAreCounted) {
  addTable({Structure(17, 0x28).word(0x0C, 1024), Structure(17, 0x28)});
  local::Machine machine(folder_.root());
  EXPECT_EQ(LocalTarget(&machine).memoryPlaces(), 2U);
  EXPECT_EQ(LocalTarget(nullptr).memoryPlaces(), std::nullopt);
}

TEST_F(LocalTargetTest, HealthIsNotSupported) {
  std::vector<Tarvex::DeviceHealth::Alert> alerts;
  EXPECT_EQ(client().getHealthSum(alerts), -4);
  EXPECT_THAT(cause(), HasSubstr("only a management controller"));
}

TEST_F(LocalTargetTest, WithoutTableTheTextsOfTheKernelAreTheSystem) {
  folder_.file("/sys/class/dmi/id/product_name", "RX\n");
  Tarvex::DeviceHealth::SystemBoard system;
  EXPECT_EQ(client().get_system(system), 0);
  EXPECT_EQ(system.machineName, "RX");
}

TEST_F(LocalTargetTest, WithoutSmbiosItsPartsAreNotSupported) {
  Tarvex::DeviceHealth::SystemBoard system;
  EXPECT_EQ(client().get_system(system), -4);
  EXPECT_THAT(cause(), HasSubstr("system board"));
  std::vector<Tarvex::DeviceHealth::DIMM> dimms;
  EXPECT_EQ(client().get_DIMMs(dimms), -4);
  EXPECT_THAT(cause(), HasSubstr("memory modules"));
  EXPECT_THAT(cause(), HasSubstr(kTable));
}

TEST_F(LocalTargetTest, WithoutSmbiosFansAndAdaptersAreStillRead) {
  std::vector<Tarvex::DeviceHealth::Fan> fans;
  std::vector<Tarvex::DeviceHealth::PCIAdapter> adapters;
  EXPECT_EQ(client().get_fans(fans), 0);
  EXPECT_EQ(client().get_PCIApaters(adapters), 0);
  EXPECT_THAT(fans, IsEmpty());
}

TEST_F(LocalTargetTest, TableOfRootAloneIsNamedWithTheRemedy) {
  if (!support::OrdinaryUser::possible()) {
    GTEST_SKIP() << "this machine knows no user but root";
  }
  addTable({Structure(1, 0x1B)});
  chmod((folder_.path() + kTable).c_str(), 0);
  chmod(folder_.path().c_str(), 0755);
  const support::OrdinaryUser user;
  std::vector<Tarvex::DeviceHealth::Processor> processors;
  EXPECT_EQ(client().get_processors(processors), -4);
  EXPECT_EQ(run_.lastFailure()->kind, base::FailureKind::kNotPermitted);
  EXPECT_THAT(cause(), HasSubstr(kTable));
  EXPECT_THAT(cause(), HasSubstr("run brivel as root"));
}

TEST_F(LocalTargetTest, TableThatCannotBeReadIsUnreadable) {
  folder_.folder(kTable);
  std::vector<Tarvex::DeviceHealth::Power> powers;
  EXPECT_EQ(client().get_Powers(powers), -3);
}

TEST(LocalTarget, WithoutMachineThereIsNoConnection) {
  ConnectionInfo info;
  info.service = run::kThisMachine;
  DevHealth client(info);
  std::vector<Tarvex::DeviceHealth::Fan> fans;
  std::vector<Tarvex::DeviceHealth::DIMM> dimms;
  EXPECT_EQ(client.get_fans(fans), -1);
  EXPECT_EQ(client.get_DIMMs(dimms), -1);
}

TEST_F(LocalTargetTest, GenerationWithoutIpmiIsNoConnection) {
  client();
  ConnectionInfo info;
  info.service = run::kThisMachine;
  Tarvex::Agentless::OrvaneTypeValue type =
      Tarvex::Agentless::kOrvaneTypeUnknown;
  EXPECT_EQ(Tarvex::Agentless::OrvaneTypeAcquire(info).GetOrvaneType(type), -1);
}

}  // namespace
}  // namespace devhealth
