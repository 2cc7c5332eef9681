#include "suite/http/curl/pacing.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace http {
namespace {

using std::chrono::milliseconds;

// A pacing after its first connection, and answers that come to it.
struct Paced {
  Pacing pacing;
  milliseconds now{1000};

  Paced(int most, milliseconds opening, milliseconds network = {})
      : pacing(most, true) {
    pacing.started(1);
    pacing.connected(opening, network, false);
  }

  // An answer without others.
  void alone(milliseconds time) {
    now += time;
    pacing.answered(now, time, 1, true, true);
  }

  // Answers of a processor that does one thing after another: each takes
  // `work` of it and `network` beside, with `width` requests under way.
  void oneAfterAnother(int count, int width, milliseconds work,
                       milliseconds network) {
    const milliseconds time = std::max(width * work, work + network);
    for (int i = 0; i < count; ++i) {
      now += time / width;
      pacing.answered(now, time, width, false, true);
    }
  }

  // Answers in groups of `width` at once.
  void together(int groups, int width, milliseconds time) {
    for (int group = 0; group < groups; ++group) {
      now += time;
      for (int i = 0; i < width; ++i) {
        pacing.answered(now, time, width, false, true);
      }
    }
  }
};

// The same with a handshake that takes much longer than an answer.
Paced expensive(int most = 16) {
  Paced paced(most, milliseconds(290));
  paced.pacing.sessionKept();
  paced.alone(milliseconds(50));
  return paced;
}

TEST(Pacing, FirstConnectionIsOpenedAlone) {
  const Pacing pacing(4, true);
  EXPECT_EQ(pacing.limit(3), 1);
}

TEST(Pacing, WithoutHandshakesNothingIsHeldBack) {
  const Pacing pacing(4, false);
  EXPECT_EQ(pacing.limit(3), 4);
}

TEST(Pacing, CheapConnectionsAreOpenedOnceTheyCanResume) {
  Paced paced(4, milliseconds(5));
  EXPECT_EQ(paced.pacing.limit(1), 1);
  paced.pacing.sessionKept();
  EXPECT_EQ(paced.pacing.limit(1), 4);
}

TEST(Pacing, NetworksPartOfAnOpeningIsNoReasonToHoldBack) {
  Paced distant(4, milliseconds(200), milliseconds(190));
  EXPECT_EQ(distant.pacing.limit(1), 1);
  distant.alone(milliseconds(95));
  EXPECT_EQ(distant.pacing.limit(1), 4);
  Paced slow(4, milliseconds(200), milliseconds(100));
  slow.alone(milliseconds(95));
  EXPECT_LE(slow.pacing.limit(1), 2);
}

TEST(Pacing, RoundTripTakesNoLongerThanAnAnswer) {
  Paced other(4, milliseconds(452), milliseconds(400));
  other.alone(milliseconds(50));
  EXPECT_LE(other.pacing.limit(1), 2);
}

TEST(Pacing, FirstAnswerEndsTheWaitForASessionToResume) {
  Paced paced(4, milliseconds(5));
  paced.alone(milliseconds(50));
  EXPECT_EQ(paced.pacing.limit(1), 4);
}

TEST(Pacing, ExpensiveSecondConnectionWaitsOnlyForASessionToResume) {
  Paced paced(4, milliseconds(290));
  EXPECT_EQ(paced.pacing.limit(2), 1);
  paced.pacing.sessionKept();
  EXPECT_EQ(paced.pacing.limit(2), 2);
  paced.alone(milliseconds(50));
  EXPECT_EQ(paced.pacing.limit(3), 2);
}

TEST(Pacing, ConnectionThatIsExpensiveBesideAnAnswerOnlyIsCheap) {
  Paced paced(16, milliseconds(290));
  paced.pacing.sessionKept();
  paced.alone(milliseconds(500));
  EXPECT_EQ(paced.pacing.limit(1), 16);
}

TEST(Pacing, FullHandshakeIsNotDoneForFewRequests) {
  Paced paced(16, milliseconds(500));
  paced.alone(milliseconds(50));
  EXPECT_EQ(paced.pacing.limit(2), 1);
  EXPECT_EQ(paced.pacing.limit(10), 2);
}

TEST(Pacing, OneSlowProcessorGetsTwo) {
  Paced paced = expensive();
  paced.pacing.started(2);
  paced.oneAfterAnother(100, 2, milliseconds(30), milliseconds(20));
  EXPECT_EQ(paced.pacing.limit(10), 2);
}

TEST(Pacing, MostlyIdleProcessorGetsMoreUntilItIsBusy) {
  Paced paced = expensive();
  for (const int width : {2, 4, 8}) {
    EXPECT_EQ(paced.pacing.limit(10), width);
    paced.pacing.started(width);
    paced.oneAfterAnother(100, width, milliseconds(8), milliseconds(42));
  }
  EXPECT_EQ(paced.pacing.limit(10), 8);
}

TEST(Pacing, AnswersAsFastAsAloneOpenMoreUpToTheMost) {
  Paced paced = expensive(6);
  for (const int width : {2, 4, 6}) {
    EXPECT_EQ(paced.pacing.limit(10), width);
    paced.pacing.started(width);
    paced.together(3, width, milliseconds(50));
  }
  EXPECT_EQ(paced.pacing.limit(10), 6);
}

TEST(Pacing, SlowAnswersThatComeTogetherOpenMore) {
  Paced paced = expensive();
  paced.pacing.started(2);
  paced.together(3, 2, milliseconds(400));
  EXPECT_EQ(paced.pacing.limit(10), 4);
}

// A processor does the second handshake, which resumes, in less time.
Paced secondOpened(milliseconds full, milliseconds resumed,
                   milliseconds answer) {
  Paced paced(16, full);
  paced.pacing.sessionKept();
  paced.alone(answer);
  paced.pacing.connected(resumed, {}, true);
  return paced;
}

TEST(Pacing, FarAwayServerGetsAllAtOnce) {
  Paced paced =
      secondOpened(milliseconds(100), milliseconds(100), milliseconds(50));
  EXPECT_EQ(paced.pacing.limit(3), 16);
}

TEST(Pacing, SlowProcessorIsNotTakenForFarAway) {
  Paced paced =
      secondOpened(milliseconds(140), milliseconds(90), milliseconds(70));
  EXPECT_EQ(paced.pacing.limit(3), 2);
}

TEST(Pacing, SlowAnswersThatComeTogetherLeaveTheServerFarAway) {
  Paced paced =
      secondOpened(milliseconds(100), milliseconds(100), milliseconds(50));
  paced.together(1, 2, milliseconds(350));
  EXPECT_EQ(paced.pacing.limit(3), 16);
}

TEST(Pacing, FarAwayServerWithoutSessionsGetsMoreAfterOneTurn) {
  Paced paced(16, milliseconds(100));
  paced.alone(milliseconds(50));
  EXPECT_EQ(paced.pacing.limit(3), 2);
  paced.together(1, 2, milliseconds(50));
  EXPECT_EQ(paced.pacing.limit(3), 4);
}

TEST(Pacing, LoginIsNoMeasureForWhatReadsTake) {
  Paced paced(16, milliseconds(290));
  paced.pacing.sessionKept();
  paced.now += milliseconds(500);
  paced.pacing.answered(paced.now, milliseconds(500), 1, true, false);
  EXPECT_EQ(paced.pacing.limit(3), 1);
  paced.alone(milliseconds(500));
  EXPECT_EQ(paced.pacing.limit(3), 16);
}

TEST(Pacing, ServerWhoseAnswersWaitForOthersIsNotFarAway) {
  Paced paced =
      secondOpened(milliseconds(140), milliseconds(120), milliseconds(70));
  paced.oneAfterAnother(1, 2, milliseconds(50), milliseconds(20));
  EXPECT_EQ(paced.pacing.limit(3), 2);
}

TEST(Pacing, NothingIsHeldBackWhereNoConnectionIsKept) {
  Paced paced = expensive();
  EXPECT_TRUE(paced.pacing.ahead());
  paced.pacing.closedByServer();
  EXPECT_TRUE(paced.pacing.ahead());
  EXPECT_EQ(paced.pacing.limit(3), 2);
  paced.pacing.closedByServer();
  EXPECT_FALSE(paced.pacing.ahead());
  EXPECT_EQ(paced.pacing.limit(3), 16);
}

TEST(Pacing, OnlyConnectionsWithHandshakesThatCarryOneRequestAreOpenedAhead) {
  EXPECT_FALSE(Pacing(4, false).ahead());
  Pacing pacing(4, true);
  EXPECT_TRUE(pacing.ahead());
  pacing.setMultiplexed(true);
  EXPECT_FALSE(pacing.ahead());
}

TEST(Pacing, WhatIsOpenStaysInUse) {
  Paced paced = expensive();
  paced.pacing.started(2);
  EXPECT_EQ(paced.pacing.limit(0), 2);
}

TEST(Pacing, OneConnectionThatCarriesAllIsFilled) {
  Paced paced(8, milliseconds(290));
  paced.pacing.setMultiplexed(true);
  EXPECT_EQ(paced.pacing.limit(3), 8);
  paced.pacing.setMultiplexed(false);
  EXPECT_EQ(paced.pacing.limit(3), 1);
}

TEST(Pacing, LeastIsOne) {
  const Pacing pacing(0, false);
  EXPECT_EQ(pacing.limit(3), 1);
}

}  // namespace
}  // namespace http
