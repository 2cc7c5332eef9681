#include "suite/brivel/progress_line.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <string>

namespace {

using brivel::ProgressLine;
using std::chrono::milliseconds;

ProgressLine::Clock::time_point simulated;

ProgressLine::Clock::time_point simulatedNow() { return simulated; }

// A line that draws into a pipe, at a time of the test's own.
class ProgressLineTest : public testing::Test {
 protected:
  ProgressLineTest() {
    EXPECT_EQ(pipe2(ends_.data(), O_NONBLOCK), 0);
    simulated = {};
  }
  ~ProgressLineTest() override {
    close(ends_[0]);
    close(ends_[1]);
  }

  // What has been drawn since the last call.
  std::string drawn() {
    std::array<char, 256> bytes{};
    const ssize_t count = read(ends_[0], bytes.data(), bytes.size());
    return count <= 0
               ? ""
               : std::string(bytes.data(), static_cast<std::size_t>(count));
  }

  int terminal() const { return ends_[1]; }

 private:
  std::array<int, 2> ends_{};
};

TEST_F(ProgressLineTest, ShortRunsDrawNothing) {
  ProgressLine line(terminal(), "10.0.0.5:443", simulatedNow);
  simulated += milliseconds(999);
  line.tick(5);
  line.done();
  EXPECT_EQ(drawn(), "");
}

TEST_F(ProgressLineTest, LongerRunsShowCountAndTime) {
  ProgressLine line(terminal(), "10.0.0.5:443", simulatedNow);
  simulated += milliseconds(2500);
  line.tick(17);
  EXPECT_EQ(drawn(), "\r10.0.0.5:443: 17 resources, 2 s\x1b[K");
  simulated += milliseconds(500);
  line.tick(1);
  EXPECT_EQ(drawn(), "\r10.0.0.5:443: 1 resource, 3 s\x1b[K");
}

TEST_F(ProgressLineTest, IsCutToTheTerminal) {
  ProgressLine line(terminal(), std::string(300, 'x'), simulatedNow);
  simulated += milliseconds(2000);
  line.tick(17);
  EXPECT_EQ(drawn(),
            "\r" + std::string(79 - 19, 'x') + ": 17 resources, 2 s\x1b[K");
}

TEST_F(ProgressLineTest, DrawsTenTimesASecondAtMost) {
  ProgressLine line(terminal(), "10.0.0.5:443", simulatedNow);
  simulated += milliseconds(1000);
  line.tick(1);
  EXPECT_NE(drawn(), "");
  simulated += milliseconds(99);
  line.tick(2);
  EXPECT_EQ(drawn(), "");
  simulated += milliseconds(1);
  line.tick(3);
  EXPECT_NE(drawn(), "");
}

TEST_F(ProgressLineTest, IsWipedWhenTheReadingIsOver) {
  ProgressLine line(terminal(), "10.0.0.5:443", simulatedNow);
  simulated += milliseconds(1500);
  line.tick(1);
  drawn();
  line.done();
  EXPECT_EQ(drawn(), "\r\x1b[K");
  line.done();
  EXPECT_EQ(drawn(), "");
}

TEST_F(ProgressLineTest, IsWipedWhenItDies) {
  {
    ProgressLine line(terminal(), "10.0.0.5:443", simulatedNow);
    simulated += milliseconds(1500);
    line.tick(1);
    drawn();
  }
  EXPECT_EQ(drawn(), "\r\x1b[K");
}

TEST_F(ProgressLineTest, OfSeveralTargetsCountsThem) {
  brivel::FleetLine line(terminal(), simulatedNow);
  simulated += milliseconds(2000);
  line.show(3, 0, 1000);
  EXPECT_EQ(drawn(), "\r1000 targets: 3 read, 2 s\x1b[K");
  simulated += milliseconds(1000);
  line.show(5, 1, 1000);
  EXPECT_NE(drawn().find("1000 targets: 5 read, 1 of them failed, 3 s"),
            std::string::npos);
}

}  // namespace
