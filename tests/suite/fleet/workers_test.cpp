#include "suite/fleet/workers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <set>
#include <stdexcept>
#include <thread>

namespace {

using base::Clock;
using fleet::Workers;

constexpr Clock::time_point kNoDeadline = Clock::time_point::max();

TEST(Workers, DoEveryJobOnceAndTellOfEach) {
  std::vector<std::atomic<int>> done(1000);
  Workers workers(done.size(), 8, [&](std::size_t index) { ++done[index]; });
  std::set<std::size_t> told;
  while (const auto index = workers.next(kNoDeadline)) {
    EXPECT_TRUE(told.insert(*index).second);
  }
  EXPECT_TRUE(workers.finished());
  EXPECT_EQ(told.size(), done.size());
  for (const auto& count : done) {
    EXPECT_EQ(count.load(), 1);
  }
}

TEST(Workers, TellInTheOrderOfCompletion) {
  std::mutex mutex;
  std::condition_variable changed;
  bool secondIsDone = false;
  Workers workers(2, 2, [&](std::size_t index) {
    if (index == 0) {
      std::unique_lock lock(mutex);
      changed.wait(lock, [&] { return secondIsDone; });
    }
  });
  EXPECT_EQ(workers.next(kNoDeadline), 1U);
  EXPECT_FALSE(workers.finished());
  {
    const std::lock_guard lock(mutex);
    secondIsDone = true;
    changed.notify_all();
  }
  EXPECT_EQ(workers.next(kNoDeadline), 0U);
  EXPECT_FALSE(workers.next(kNoDeadline));
}

TEST(Workers, NeverDoMoreJobsAtATimeThanTold) {
  std::atomic<int> underWay{0};
  std::atomic<int> most{0};
  {
    Workers workers(200, 3, [&](std::size_t) {
      const int now = ++underWay;
      int seen = most.load();
      while (now > seen && !most.compare_exchange_weak(seen, now)) {
      }
      --underWay;
    });
    while (workers.next(kNoDeadline)) {
    }
  }
  EXPECT_GE(most.load(), 1);
  EXPECT_LE(most.load(), 3);
}

TEST(Workers, BeginNoMoreThanTheirResultsAreTaken) {
  constexpr int kFanout = 3;
  constexpr int kMostAhead = 2 * kFanout;  // Done, and under way.
  std::atomic<int> taken{0};
  std::atomic<int> mostAhead{0};
  Workers workers(50, kFanout, [&](std::size_t index) {
    const int ahead = static_cast<int>(index) + 1 - taken.load();
    int seen = mostAhead.load();
    while (ahead > seen && !mostAhead.compare_exchange_weak(seen, ahead)) {
    }
  });
  for (int i = 0; i < 1000; ++i) {
    std::this_thread::yield();  // Lets them do all that they would.
  }
  ++taken;
  while (workers.next(kNoDeadline)) {
    ++taken;
  }
  EXPECT_TRUE(workers.finished());
  EXPECT_EQ(taken.load(), 51);
  EXPECT_LE(mostAhead.load(), kMostAhead);
}

TEST(Workers, ThatAreStoppedBeginNothingMore) {
  std::atomic<int> begun{0};
  std::mutex gate;
  gate.lock();
  Workers workers(100, 1, [&](std::size_t) {
    ++begun;
    const std::lock_guard lock(gate);
  });
  while (begun.load() == 0) {
    std::this_thread::yield();
  }
  workers.stop();
  gate.unlock();
  EXPECT_EQ(workers.next(kNoDeadline), 0U);
  EXPECT_FALSE(workers.next(kNoDeadline));
  EXPECT_TRUE(workers.finished());
  EXPECT_EQ(begun.load(), 1);
}

TEST(Workers, ExceptionOfAJobIsThrownToTheCaller) {
  Workers workers(10, 1, [](std::size_t) { throw std::runtime_error("job"); });
  EXPECT_THROW(workers.next(kNoDeadline), std::runtime_error);
}

TEST(Workers, WaitNoLongerThanTold) {
  std::mutex gate;
  gate.lock();
  Workers workers(1, 1, [&](std::size_t) { const std::lock_guard lock(gate); });
  EXPECT_FALSE(workers.next(Clock::now()));
  EXPECT_FALSE(workers.finished());
  gate.unlock();
  EXPECT_EQ(workers.next(kNoDeadline), 0U);
}

}  // namespace
