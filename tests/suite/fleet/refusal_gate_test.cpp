#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "suite/fleet/credentials.h"

namespace {

using base::Clock;
using base::Failure;
using base::FailureKind;
using fleet::RefusalGate;

constexpr Clock::time_point kForever = Clock::time_point::max();

const Failure kRefused =
    base::makeFailure(FailureKind::kAuthentication, "refused");
const Failure kLost = base::makeFailure(FailureKind::kReadTimeout, "no answer");

TEST(RefusalGate, StopsAPasswordAfterThreeRefusals) {
  RefusalGate gate("admin");
  for (int i = 0; i < RefusalGate::kMostRefusals; ++i) {
    EXPECT_FALSE(gate.enter(kForever));
    gate.leave(&kRefused);
  }
  const auto stopped = gate.enter(kForever);
  ASSERT_TRUE(stopped);
  EXPECT_EQ(stopped->kind, FailureKind::kAuthentication);
  EXPECT_EQ(stopped->cause,
            "not asked: the password of user admin was refused by 3 targets "
            "and accepted by none");
  EXPECT_FALSE(gate.proven());
}

TEST(RefusalGate, IsOpenOnceAPasswordWasAccepted) {
  RefusalGate gate("admin");
  EXPECT_FALSE(gate.enter(kForever));
  gate.leave(nullptr);
  EXPECT_TRUE(gate.proven());
  for (int i = 0; i < 10; ++i) {
    EXPECT_FALSE(gate.enter(kForever));
    gate.leave(&kRefused);
  }
}

// A target that says nothing about the password does not count.
TEST(RefusalGate, CountsRefusalsAlone) {
  RefusalGate gate("admin");
  for (int i = 0; i < 10; ++i) {
    EXPECT_FALSE(gate.enter(kForever));
    gate.leave(&kLost);
  }
}

TEST(RefusalGate, LetsNoMoreTryThanMayBeRefused) {
  RefusalGate gate("admin");
  for (int i = 0; i < RefusalGate::kMostRefusals; ++i) {
    EXPECT_FALSE(gate.enter(kForever));
  }
  const auto late = gate.enter(Clock::now());
  ASSERT_TRUE(late);
  EXPECT_EQ(late->kind, FailureKind::kDeadline);

  std::thread waiting([&] { EXPECT_FALSE(gate.enter(kForever)); });
  gate.leave(nullptr);
  waiting.join();
}

}  // namespace
