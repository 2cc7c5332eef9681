#include "suite/brivel/progress_line.h"

#include "suite/base/text.h"
#include "suite/platform/terminal.h"

namespace brivel {
namespace {

constexpr std::chrono::seconds kQuietStart{1};
constexpr std::chrono::milliseconds kBetweenDrawings{100};
constexpr std::size_t kWidest = 79;

}  // namespace

DrawnLine::DrawnLine(int descriptor, Clock::time_point (*now)())
    : descriptor_(descriptor), now_(now), begun_(now()), drawnAt_(begun_) {}

void DrawnLine::draw(const std::string& beginning, const std::string& middle) {
  const Clock::time_point time = now_();
  if (time - begun_ < kQuietStart ||
      (drawn_ && time - drawnAt_ < kBetweenDrawings)) {
    return;
  }
  const auto elapsed =
      std::chrono::duration_cast<std::chrono::seconds>(time - begun_).count();
  const std::string rest =
      ": " + middle + ", " + std::to_string(elapsed) + " s";
  // A line that is wider than the terminal could not be drawn over.
  platform::writeRaw(
      descriptor_,
      "\r" + beginning.substr(0, kWidest - rest.size()) + rest + "\x1b[K");
  drawn_ = true;
  drawnAt_ = time;
}

void DrawnLine::clear() {
  if (drawn_) {
    platform::writeRaw(descriptor_, "\r\x1b[K");
    drawn_ = false;
  }
}

ProgressLine::ProgressLine(int descriptor, const std::string& target,
                           DrawnLine::Clock::time_point (*now)())
    : line_(descriptor, now), target_(base::escapeControls(target)) {}

void ProgressLine::tick(std::uint64_t resourcesRead) {
  line_.draw(target_, std::to_string(resourcesRead) +
                          (resourcesRead == 1 ? " resource" : " resources"));
}

void FleetLine::show(std::size_t read, std::size_t failed, std::size_t all) {
  line_.draw(
      std::to_string(all) + " targets",
      std::to_string(read) + " read" +
          (failed == 0 ? ""
                       : ", " + std::to_string(failed) + " of them failed"));
}

}  // namespace brivel
