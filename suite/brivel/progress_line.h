#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "suite/base/progress.h"
#include "suite/platform/interrupt.h"

namespace brivel {

/// Shows on a terminal how many resources have been read and how long the run
/// has taken, once it takes more than a second, and removes the line at the
/// end. The process's progress observer during its life.
class ProgressLine : public base::Progress {
 public:
  using Clock = std::chrono::steady_clock;

  /// `descriptor` is the terminal, `target` the name that the line begins
  /// with, and `now` tells the time.
  ProgressLine(int descriptor, const std::string& target,
               Clock::time_point (*now)() = Clock::now);
  ~ProgressLine() override;

  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  void tick(std::uint64_t resourcesRead) override;
  void done() override;

 private:
  int descriptor_;
  std::string target_;
  Clock::time_point (*now_)();
  Clock::time_point begun_;
  Clock::time_point drawnAt_;
  bool drawn_ = false;
};

}  // namespace brivel
