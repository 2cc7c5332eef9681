#include "suite/local/controller/way_choice.h"

#include <gtest/gtest.h>

#include "tests/suite/local/loopback.h"

namespace local {
namespace {

using namespace std::chrono_literals;

ControllerPath wayTo(std::uint16_t port) {
  ControllerPath path;
  path.device = "lo";
  path.address = "127.0.0.1";
  path.port = port;
  return path;
}

ControllerPath wayWith(PathProblem problem) {
  ControllerPath path;
  path.device = "nosuchdevice0";
  path.problem = problem;
  return path;
}

TEST(ChooseWay, SingleWayIsTakenUntried) {
  const WayChoice choice = chooseWay({wayTo(deadPort())}, 1h);
  EXPECT_EQ(choice.path.problem, PathProblem::kNone);
  EXPECT_FALSE(choice.answers);
}

TEST(ChooseWay, FirstThatAnswersIsTaken) {
  const SilentPort silent;
  const LivingPort living;
  const WayChoice choice =
      chooseWay({wayWith(PathProblem::kNoAddress), wayTo(silent.port()),
                 wayWith(PathProblem::kUndiscovered), wayTo(living.port())},
                1h);
  EXPECT_EQ(choice.path.port, living.port());
  EXPECT_TRUE(choice.answers);
}

TEST(ChooseWay, OpenWayIsTakenWhereNoneAnswers) {
  const std::uint16_t dead = deadPort();
  const WayChoice choice =
      chooseWay({wayWith(PathProblem::kNoAddress), wayTo(dead)}, 1h);
  EXPECT_EQ(choice.path.problem, PathProblem::kNone);
  EXPECT_EQ(choice.path.port, dead);
  EXPECT_FALSE(choice.answers);
}

TEST(ChooseWay, FirstProblemStandsWhereNoWayIsOpen) {
  const WayChoice choice = chooseWay(
      {wayWith(PathProblem::kDown), wayWith(PathProblem::kUndiscovered)}, 1h);
  EXPECT_EQ(choice.path.problem, PathProblem::kDown);
  EXPECT_FALSE(choice.answers);
}

TEST(ChooseWay, WhatAnyWaySaysOfTheControllerHolds) {
  const LivingPort living;
  ControllerPath silent = wayWith(PathProblem::kDown);
  silent.bootstrapsCredentials = true;
  silent.serviceUuid = "01112233-4455-6677-8899-aabbccddeeff";
  const WayChoice choice = chooseWay({silent, wayTo(living.port())}, 1h);
  EXPECT_TRUE(choice.path.bootstrapsCredentials);
  EXPECT_EQ(choice.path.serviceUuid, silent.serviceUuid);
}

}  // namespace
}  // namespace local
