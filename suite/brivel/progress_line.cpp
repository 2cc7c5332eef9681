#include "suite/brivel/progress_line.h"

#include <cstddef>

#include "suite/base/text.h"
#include "suite/platform/terminal.h"

namespace brivel {
namespace {

constexpr std::chrono::seconds kQuietStart{1};
constexpr std::chrono::milliseconds kBetweenDrawings{100};
constexpr std::size_t kWidest = 79;

}  // namespace

ProgressLine::ProgressLine(int descriptor, const std::string& target,
                           Clock::time_point (*now)())
    : descriptor_(descriptor),
      target_(base::escapeControls(target)),
      now_(now),
      begun_(now()),
      drawnAt_(begun_) {
  base::setProgress(this);
}

ProgressLine::~ProgressLine() {
  base::setProgress(nullptr);
  done();
}

void ProgressLine::tick(std::uint64_t resourcesRead) {
  const Clock::time_point time = now_();
  if (time - begun_ < kQuietStart ||
      (drawn_ && time - drawnAt_ < kBetweenDrawings)) {
    return;
  }
  const auto elapsed =
      std::chrono::duration_cast<std::chrono::seconds>(time - begun_).count();
  const std::string count =
      ": " + std::to_string(resourcesRead) +
      (resourcesRead == 1 ? " resource, " : " resources, ") +
      std::to_string(elapsed) + " s";
  // A line that is wider than the terminal could not be drawn over.
  const std::string target = target_.substr(0, kWidest - count.size());
  platform::writeRaw(descriptor_, "\r" + target + count + "\x1b[K");
  drawn_ = true;
  drawnAt_ = time;
}

void ProgressLine::done() {
  if (drawn_) {
    platform::writeRaw(descriptor_, "\r\x1b[K");
    drawn_ = false;
  }
}

}  // namespace brivel
