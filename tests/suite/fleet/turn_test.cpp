#include "suite/fleet/turn.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

namespace {

using fleet::Turn;

TEST(Turn, IsHadByOneAtATime) {
  Turn turn;
  std::atomic<int> holders{0};
  std::atomic<int> most{0};
  constexpr int kThreads = 4;
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&] {
      for (int times = 0; times < 200; ++times) {
        ASSERT_TRUE(turn.take());
        most = std::max(most.load(), ++holders);
        --holders;
        turn.give();
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(most.load(), 1);
}

TEST(Turn, MayBeGivenBackByAnotherThread) {
  Turn turn;
  std::thread([&] { ASSERT_TRUE(turn.take()); }).join();
  turn.give();
  EXPECT_TRUE(turn.take());
}

TEST(Turn, ThatIsClosedIsWaitedForByNobody) {
  Turn turn;
  ASSERT_TRUE(turn.take());
  std::thread waiting([&] { EXPECT_FALSE(turn.take()); });
  turn.close();
  waiting.join();
  turn.give();
  EXPECT_FALSE(turn.take());
}

}  // namespace
