#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

#include "suite/base/progress.h"
#include "suite/platform/interrupt.h"

namespace brivel {

/// A line on a terminal that is drawn again and again while a run takes more
/// than a second, and is removed at the end.
class DrawnLine {
 public:
  using Clock = std::chrono::steady_clock;

  /// `descriptor` is the terminal, and `now` tells the time.
  DrawnLine(int descriptor, Clock::time_point (*now)());
  ~DrawnLine() { clear(); }

  DrawnLine(const DrawnLine&) = delete;
  DrawnLine& operator=(const DrawnLine&) = delete;

  /// Draws "BEGINNING: MIDDLE, SECONDS s", the beginning cut to what fits, if
  /// it is time to draw.
  void draw(const std::string& beginning, const std::string& middle);

  void clear();

 private:
  int descriptor_;
  Clock::time_point (*now_)();
  Clock::time_point begun_;
  Clock::time_point drawnAt_;
  bool drawn_ = false;
};

/// Shows how many resources have been read.
class ProgressLine : public base::Progress {
 public:
  using Clock = DrawnLine::Clock;

  /// `target` is the name that the line begins with.
  ProgressLine(int descriptor, const std::string& target,
               Clock::time_point (*now)() = Clock::now);

  void tick(std::uint64_t resourcesRead) override;
  void done() override { line_.clear(); }

 private:
  DrawnLine line_;
  std::string target_;
};

/// Shows how many of several targets have been read.
class FleetLine {
 public:
  explicit FleetLine(int descriptor, DrawnLine::Clock::time_point (*now)() =
                                         DrawnLine::Clock::now)
      : line_(descriptor, now) {}

  void show(std::size_t read, std::size_t failed, std::size_t all);

 private:
  DrawnLine line_;
};

}  // namespace brivel
