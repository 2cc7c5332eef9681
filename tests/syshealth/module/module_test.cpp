#include <gmock/gmock.h>

#include <boost/dll/shared_library.hpp>
#include <stdexcept>

#include "syshealth/app/entry_points.h"
#include "tests/fakes/suite_test.h"

// The built library, loaded as the host loads it. This program exports the
// doubles, which take the place of the suite's own services; on Windows their
// library does, because it was loaded first.

namespace {

using fakes::Kind;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class Module : public fakes::SuiteTest {
 protected:
  Module() : library_(MODULE_FILE) { fakes::clearJournal(); }

  void init() const { entryPoint<decltype(Init)>("Init")(); }

  std::int32_t paramRegister(std::int32_t command) const {
    return entryPoint<decltype(ParamRegister)>("ParamRegister")(command);
  }

  BrivelResult appMain(std::int32_t command) const {
    return entryPoint<decltype(AppMain)>("AppMain")(command);
  }

 private:
  template <typename Function>
  Function* entryPoint(const char* name) const {
    return &library_.get<Function>(name);
  }

  boost::dll::shared_library library_;
};

TEST_F(Module, LoadsWithoutASound) {
  EXPECT_THAT(fakes::journal(), ElementsAre());
}

TEST_F(Module, InitRegistersTheApplication) {
  init();
  EXPECT_THAT(fakes::journal(),
              ElementsAre("log 4: Entering  SystemHealth::Init",
                          "call ArgParser::GetInstance()",
                          "call ArgParser::RegisterApp(syshealth, 29)",
                          "log 4: Exiting  SystemHealth::Init"));
}

TEST_F(Module, InitCompletesWhenTheNameIsRefused) {
  fakes::script().registerAppResult = 3;
  init();
  EXPECT_THAT(fakes::noted(Kind::kLog),
              ElementsAre("4: Entering  SystemHealth::Init",
                          "1: RegisterApp failed with error code = 3",
                          "4: Exiting  SystemHealth::Init"));
}

TEST_F(Module, ParamRegisterRegistersTheEmptySpecification) {
  EXPECT_EQ(paramRegister(1), 0);
  EXPECT_THAT(fakes::noted(Kind::kCall),
              Contains("ArgParser::RegisterOption(29, \"\")"));
}

TEST_F(Module, ParamRegisterRefusesOtherCommands) {
  EXPECT_EQ(paramRegister(0), 4);
  EXPECT_EQ(paramRegister(2), 4);
  EXPECT_THAT(fakes::noted(Kind::kCall),
              Not(Contains("ArgParser::RegisterOption(29, \"\")")));
}

TEST_F(Module, AppMainMakesAndDestroysItsObjectForAnyCommand) {
  const BrivelResult result = appMain(2);
  EXPECT_EQ(result.code, 4);
  EXPECT_EQ(result.message, "");
  EXPECT_THAT(fakes::journal(),
              ElementsAre("call AppBase()",
                          "log 4: Entering  SystemHealth::SystemHealth",
                          "log 4: Exiting  SystemHealth::SystemHealth",
                          "log 4: Entering  SystemHealth::AppMain",
                          "log 4: Exiting  SystemHealth::AppMain",
                          "log 4: Entering  SystemHealth::~SystemHealth",
                          "log 4: Exiting  SystemHealth::~SystemHealth",
                          "call ~AppBase(id 29, command 2)"));
}

TEST_F(Module, AppMainHandsBackAll32Bits) {
  fakes::script().reachability = 0x7FFE0102;
  const BrivelResult result = appMain(1);
  EXPECT_EQ(result.code, 0x7FFE0102);
  EXPECT_EQ(result.message, "");
}

TEST_F(Module, SummaryRunsOnTheHostsServices) {
  fakes::script().ipmiTargets = {target("a")};
  fakes::script().targets["a"].alerts = {{"", "P1", 2, "Power", "no input"}};
  EXPECT_EQ(appMain(1).code, 0);
  EXPECT_EQ(output(),
            "\n"
            "==================================\n"
            "System                         Normal \n"
            "Processors                     Normal \n"
            "Cooling                        Normal \n"
            "Memory                         Normal \n"
            "PCI                            Normal \n"
            "Power                          Error \n"
            "Disks                          Normal \n"
            "Other                          Normal \n"
            "\n"
            "Active Events with Error/Warning:\n"
            "Message ID:                    P1 \n"
            "Level:                         Error \n"
            "Message:                       no input \n"
            "\n");
}

TEST_F(Module, RunsKeepNothingOfEachOther) {
  fakes::script().ipmiTargets = {target("a")};
  fakes::script().targets["a"].alerts = {{"", "P1", 2, "Power", "no input"}};
  appMain(1);
  const std::string first = output();
  appMain(1);
  EXPECT_EQ(output(), first + first);
}

TEST_F(Module, ItemsRunOnTheHostsServices) {
  giveDevice("all");
  fakes::script().cimTargets = {target("a")};
  EXPECT_EQ(appMain(1).code, 0);
  EXPECT_THAT(fakes::noted(Kind::kCall),
              testing::IsSupersetOf({"DevHealth::get_system(empty record)",
                                     "DevHealth::get_processors(list of 0)",
                                     "DevHealth::get_fans(list of 0)",
                                     "DevHealth::get_DIMMs(list of 0)",
                                     "DevHealth::get_Powers(list of 0)",
                                     "DevHealth::get_PCIApaters(list of 0)"}));
}

TEST_F(Module, MessagesComeFromItsOwnCatalogue) {
  fakes::script().cimTargets = {};
  fakes::script().parsedError = {1674, ""};
  giveDevice("fan");
  EXPECT_EQ(appMain(1).code, 1674);
  EXPECT_THAT(fakes::noted(Kind::kLog),
              Contains("1: \"--sftp\" parameter is mandatory to update the "
                       "target system. Please add it and retry."));
}

TEST_F(Module, ExceptionPassesOutAndDestroysTheObject) {
  fakes::script().throwingCall = "ConnectInfo::TryCimCon(default record)";
  try {
    appMain(1);
    ADD_FAILURE() << "nothing was thrown";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(),
                 "scripted failure of ConnectInfo::TryCimCon(default record)");
  }
  std::vector<std::string> end = fakes::noted(Kind::kLog);
  end.erase(end.begin(), end.begin() + 2);
  // The dispatcher's exit comes before the summary by its own rule.
  EXPECT_THAT(end,
              ElementsAre("4: Entering  SystemHealth::AppMain",
                          "4: Entering  SystemHealth::showCmd",
                          "3: The connection mode is 2; InBand:1 OOB:2 ESXI:4",
                          "4: Exiting  SystemHealth::showCmd",
                          "4: Entering  SystemHealth::showHealthSummary",
                          "4: Entering  SystemHealth::~SystemHealth",
                          "4: Exiting  SystemHealth::~SystemHealth"));
  EXPECT_EQ(fakes::journal().back(), "call ~AppBase(id 29, command 1)");
}

TEST_F(Module, ExceptionPassesOutOfInit) {
  fakes::script().throwingCall = "ArgParser::GetInstance()";
  EXPECT_THROW(init(), std::runtime_error);
  EXPECT_THAT(fakes::noted(Kind::kLog),
              ElementsAre("4: Entering  SystemHealth::Init"));
}

}  // namespace
