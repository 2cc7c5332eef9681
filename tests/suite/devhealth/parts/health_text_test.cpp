#include "suite/devhealth/parts/health_text.h"

#include <gtest/gtest.h>

#include <boost/json/parse.hpp>

namespace devhealth {
namespace {

std::string state(const char* status) {
  return healthState(boost::json::parse(status).as_object());
}

TEST(HealthState, IsTheOwnHealth) {
  EXPECT_EQ(state(R"({"Status": {"Health": "OK"}})"), "OK");
  EXPECT_EQ(state(R"({"Status": {"Health": "Warning"}})"), "Warning");
  EXPECT_EQ(
      state(R"({"Status": {"Health": "Critical", "HealthRollup": "OK"}})"),
      "Critical");
}

TEST(HealthState, RollupStandsInForNoHealth) {
  EXPECT_EQ(state(R"({"Status": {"Health": null, "HealthRollup": "Warning"}})"),
            "Warning");
}

TEST(HealthState, UnheardOfTextsAreUnknown) {
  EXPECT_EQ(state(R"({"Status": {"Health": "Fine"}})"), "Unknown");
  EXPECT_EQ(state(R"({"Status": {"Health": 1}})"), "Unknown");
  EXPECT_EQ(state(R"({"Status": "OK"})"), "Unknown");
  EXPECT_EQ(state("{}"), "Unknown");
}

}  // namespace
}  // namespace devhealth
