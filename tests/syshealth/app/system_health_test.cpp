#include "syshealth/app/system_health.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <type_traits>

#include "tests/fakes/suite_test.h"

namespace {

using fakes::Kind;
using testing::ElementsAre;
using testing::IsEmpty;

static_assert(std::is_base_of_v<AppBase, SystemHealth>);
static_assert(std::has_virtual_destructor_v<SystemHealth>);

class SystemHealthObject : public fakes::SuiteTest {};

TEST_F(SystemHealthObject, ConstructorBuildsTheEightBuckets) {
  const SystemHealth application;
  std::vector<std::string> names;
  for (const AlertCategoryBucket& bucket : application.categoryBuckets) {
    names.push_back(bucket.name);
    EXPECT_EQ(bucket.status, 0);
    EXPECT_THAT(bucket.alerts, IsEmpty());
  }
  EXPECT_THAT(names, ElementsAre("System", "Processors", "Cooling", "Memory",
                                 "PCI", "Power", "Disks", "Other"));
}

TEST_F(SystemHealthObject, LifeIsTracedWithinTheBasesLife) {
  { const SystemHealth application; }
  EXPECT_THAT(fakes::journal(),
              ElementsAre("call AppBase()",
                          "log 4: Entering  SystemHealth::SystemHealth",
                          "log 4: Exiting  SystemHealth::SystemHealth",
                          "log 4: Entering  SystemHealth::~SystemHealth",
                          "log 4: Exiting  SystemHealth::~SystemHealth",
                          "call ~AppBase(id 0, command 0)"));
}

TEST_F(SystemHealthObject, IsDestroyedThroughItsBase) {
  const AppBase* base = new SystemHealth;
  fakes::clearJournal();
  delete base;
  EXPECT_THAT(fakes::journal(),
              ElementsAre("log 4: Entering  SystemHealth::~SystemHealth",
                          "log 4: Exiting  SystemHealth::~SystemHealth",
                          "call ~AppBase(id 0, command 0)"));
}

class Init : public fakes::SuiteTest {};

TEST_F(Init, RegistersNameAndNumber) {
  SystemHealth::Init();
  EXPECT_THAT(fakes::journal(),
              ElementsAre("log 4: Entering  SystemHealth::Init",
                          "call ArgParser::GetInstance()",
                          "call ArgParser::RegisterApp(syshealth, 29)",
                          "log 4: Exiting  SystemHealth::Init"));
}

TEST_F(Init, MissingParserEndsItWithoutATrace) {
  fakes::script().parserFetches = 0;
  SystemHealth::Init();
  EXPECT_THAT(fakes::journal(),
              ElementsAre("log 4: Entering  SystemHealth::Init",
                          "call ArgParser::GetInstance()"));
}

TEST_F(Init, RefusedRegistrationIsLoggedAndItCarriesOn) {
  fakes::script().registerAppResult = -7;
  SystemHealth::Init();
  EXPECT_THAT(fakes::journal(),
              ElementsAre("log 4: Entering  SystemHealth::Init",
                          "call ArgParser::GetInstance()",
                          "call ArgParser::RegisterApp(syshealth, 29)",
                          "log 1: RegisterApp failed with error code = -7",
                          "log 4: Exiting  SystemHealth::Init"));
}

TEST_F(Init, ExceptionPassesOutWithoutExitTrace) {
  fakes::script().throwingCall = "ArgParser::RegisterApp(syshealth, 29)";
  EXPECT_THROW(SystemHealth::Init(), std::runtime_error);
  EXPECT_THAT(fakes::noted(Kind::kLog),
              ElementsAre("4: Entering  SystemHealth::Init"));
}

class ParamRegister : public fakes::SuiteTest {};

TEST_F(ParamRegister, ShowRegistersTheEmptySpecification) {
  EXPECT_EQ(SystemHealth::ParamRegister(1), 0);
  EXPECT_THAT(fakes::journal(),
              ElementsAre("log 4: Entering  SystemHealth::ParamRegister",
                          "call ArgParser::GetInstance()",
                          "call ArgParser::RegisterOption(29, \"\")",
                          "log 4: Exiting  SystemHealth::ParamRegister"));
}

TEST_F(ParamRegister, RefusedSpecificationIsIgnored) {
  fakes::script().registerOptionResult = 5;
  EXPECT_EQ(SystemHealth::ParamRegister(1), 0);
  EXPECT_EQ(fakes::noted(Kind::kLog).back(),
            "4: Exiting  SystemHealth::ParamRegister");
}

TEST_F(ParamRegister, OtherCommandsAreInvalidAndRegisterNothing) {
  for (const std::int32_t command : {0, 2, -1}) {
    fakes::clearJournal();
    EXPECT_EQ(SystemHealth::ParamRegister(command), 4) << command;
    EXPECT_THAT(fakes::journal(),
                ElementsAre("log 4: Entering  SystemHealth::ParamRegister",
                            "call ArgParser::GetInstance()"));
  }
}

TEST_F(ParamRegister, MissingParserIsAGenericFailure) {
  fakes::script().parserFetches = 0;
  EXPECT_EQ(SystemHealth::ParamRegister(1), 1);
  EXPECT_THAT(fakes::journal(),
              ElementsAre("log 4: Entering  SystemHealth::ParamRegister",
                          "call ArgParser::GetInstance()"));
}

TEST_F(ParamRegister, MissingParserCountsBeforeTheCommand) {
  fakes::script().parserFetches = 0;
  EXPECT_EQ(SystemHealth::ParamRegister(2), 1);
}

class AppMain : public fakes::SuiteTest {
 protected:
  AppMain() { fakes::clearJournal(); }

  SystemHealth application;
};

TEST_F(AppMain, StoresNumberAndCommand) {
  application.AppMain(2);
  EXPECT_EQ(application.appId, 29);
  EXPECT_EQ(application.command, 2);
}

TEST_F(AppMain, OtherCommandsAreInvalidWithoutAQuery) {
  for (const std::int32_t command : {0, 2, -1}) {
    fakes::clearJournal();
    const BrivelResult result = application.AppMain(command);
    EXPECT_EQ(result.code, 4);
    EXPECT_EQ(result.message, "");
    EXPECT_THAT(fakes::journal(),
                ElementsAre("log 4: Entering  SystemHealth::AppMain",
                            "log 4: Exiting  SystemHealth::AppMain"));
  }
}

TEST_F(AppMain, ShowGivesItsCodeWithAnEmptyMessage) {
  fakes::script().reachability = 0x1006A;
  const BrivelResult result = application.AppMain(1);
  EXPECT_EQ(result.code, 0x1006A);
  EXPECT_EQ(result.message, "");
}

TEST_F(AppMain, ShowGivesNegativeCodesWhole) {
  fakes::script().reachability = -2;
  EXPECT_EQ(application.AppMain(1).code, -2);
}

TEST_F(AppMain, TracesAroundTheCommand) {
  fakes::script().settingsFetches = 0;
  EXPECT_EQ(application.AppMain(1).code, 1);
  EXPECT_THAT(fakes::noted(Kind::kLog),
              ElementsAre("4: Entering  SystemHealth::AppMain",
                          "4: Entering  SystemHealth::showCmd",
                          "1: The ConnectInfo::Getinstance return NULL",
                          "4: Exiting  SystemHealth::AppMain"));
}

TEST_F(AppMain, ExceptionPassesOutWithoutExitTrace) {
  fakes::script().throwingCall = "ConnectInfo::GetConMode()";
  EXPECT_THROW(application.AppMain(1), std::runtime_error);
  EXPECT_THAT(fakes::noted(Kind::kLog),
              ElementsAre("4: Entering  SystemHealth::AppMain",
                          "4: Entering  SystemHealth::showCmd"));
}

}  // namespace
