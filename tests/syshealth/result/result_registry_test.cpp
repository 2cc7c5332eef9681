#include "syshealth/result/result_registry.h"

#include <gtest/gtest.h>

namespace {

TEST(RegisterResult, ComposesNumberAndModule) {
  EXPECT_EQ(registerResult(7, 125, "composed"), 0x7007D);
}

TEST(RegisterResult, KeepsMessageOfModuleAboveZeroInThatModulesTable) {
  const int code = registerResult(9, 100, "of module 9");
  ResultRegistry& registry = ResultRegistry::instance();
  EXPECT_EQ(registry.moduleTables().at(9).at(code), "of module 9");
  EXPECT_EQ(registry.generalTable().count(code), 0U);
}

TEST(RegisterResult, OverwritesTheTextOfACode) {
  registerResult(8, 1, "first");
  const int code = registerResult(8, 1, "second");
  EXPECT_EQ(getResultMessage(code), "second");
}

TEST(RegisterResult, ModuleZeroGoesToTheGeneralTable) {
  const int code = registerResult(0, 200, "suite-wide");
  ResultRegistry& registry = ResultRegistry::instance();
  EXPECT_EQ(registry.generalTable().at(code), "suite-wide");
  EXPECT_EQ(registry.moduleTables().count(0), 0U);
}

TEST(RegisterResult, NegativeModuleGoesToTheGeneralTable) {
  const int code = registerResult(-1, 5, "below zero");
  ResultRegistry& registry = ResultRegistry::instance();
  EXPECT_EQ(code, static_cast<int>(0xFFFF0005U));
  EXPECT_EQ(registry.generalTable().at(code), "below zero");
  EXPECT_EQ(registry.moduleTables().count(-1), 0U);
}

TEST(LookupRegisteredMessage, FindsNegativeModuleThroughTheGeneralTable) {
  const int code = registerResult(-1, 6, "below zero");
  EXPECT_EQ(lookupRegisteredMessage(code, -1), "below zero");
}

TEST(LookupRegisteredMessage, FindsModuleZeroUnderAnyModule) {
  const int code = registerResult(0, 201, "suite-wide");
  EXPECT_EQ(lookupRegisteredMessage(code, -1), "suite-wide");
  EXPECT_EQ(lookupRegisteredMessage(code, 24), "suite-wide");
}

TEST(LookupRegisteredMessage, FindsModuleCodeUnderItsModuleOnly) {
  EXPECT_EQ(lookupRegisteredMessage(0x3007D, 3),
            "Failed to trigger diagnostic.");
  EXPECT_EQ(lookupRegisteredMessage(0x3007D, 4), "Unknow error");
}

TEST(LookupRegisteredMessage, ModuleWithoutTableGivesFallback) {
  EXPECT_EQ(lookupRegisteredMessage(0x5007D, 5), "Unknow error");
}

TEST(GetResultMessage, GivesSuccess) {
  EXPECT_EQ(getResultMessage(0), "Success.");
}

TEST(GetResultMessage, GivesInternalError) {
  EXPECT_EQ(getResultMessage(17), "Internal error.");
}

TEST(GetResultMessage, UnassignedSuiteWideNumberGivesFallback) {
  EXPECT_EQ(getResultMessage(2), "Unknow error");
  EXPECT_EQ(getResultMessage(31), "Unknow error");
}

TEST(GetResultMessage, GivesRowOfItsModule) {
  EXPECT_EQ(getResultMessage(0x1006A),
            "You are running on an Ulvarn system. Please make sure ZEPKIT_PATH "
            "is set correctly to the executable binary of ZEPKIT in "
            "global.config.");
}

TEST(GetResultMessage, UnregisteredModuleGivesFallback) {
  EXPECT_EQ(getResultMessage(0x5007D), "Unknow error");
}

TEST(GetResultMessage, NegativeCodeWithoutRowGivesFallback) {
  EXPECT_EQ(getResultMessage(static_cast<int>(0xFFFE00FFU)), "Unknow error");
}

TEST(GetResultMessage, LegacyFamilyIsTakenFromBits8To15OfAnyCode) {
  EXPECT_EQ(getResultMessage(0x10601), "Unknown error");
}

TEST(GetResultMessage, CombinedCodeHasTheMessageOfItsValue) {
  EXPECT_EQ(13 | 25, 29);
  EXPECT_EQ(getResultMessage(13 | 25), "SMM internal error.");
}

TEST(ResultRegistry, InstanceIsOneObject) {
  EXPECT_EQ(&ResultRegistry::instance(), &ResultRegistry::instance());
}

}  // namespace
