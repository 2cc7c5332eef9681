#include "suite/brivel/stats_lines.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

using brivel::statsLines;

TEST(StatsLines, TellEachTargetAndTheTime) {
  connection::TargetCost cost;
  cost.address = "10.0.0.5:443";
  cost.logins = 1;
  cost.requests = 27;
  cost.retries = 0;
  cost.connections = 4;
  cost.resumed = 3;
  cost.mostUnderWay = 2;
  cost.bytes = 81234;
  cost.levels = 6;
  EXPECT_EQ(
      statsLines({cost}, std::chrono::milliseconds(612)),
      "brivel: 10.0.0.5:443: 1 login, 27 requests (at most 2 at a time), 0 "
      "retries, 4 connections (3 resumed), 81234 bytes, 6 levels\n"
      "brivel: wall time 0.612 s\n");
}

TEST(StatsLines, KnowOneFromMany) {
  connection::TargetCost cost;
  cost.address = "a";
  cost.logins = cost.requests = cost.retries = 1;
  cost.connections = cost.mostUnderWay = cost.bytes = cost.levels = 1;
  EXPECT_EQ(statsLines({cost}, std::chrono::nanoseconds(0)),
            "brivel: a: 1 login, 1 request (at most 1 at a time), 1 retry, 1 "
            "connection (0 resumed), 1 byte, 1 level\n"
            "brivel: wall time 0.000 s\n");
}

TEST(StatsLines, TellTheTimeWithoutATarget) {
  EXPECT_EQ(statsLines({}, std::chrono::seconds(2)),
            "brivel: wall time 2.000 s\n");
}

}  // namespace
