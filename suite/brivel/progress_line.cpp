#include "suite/brivel/progress_line.h"

#include <array>
#include <cinttypes>
#include <cstddef>
#include <cstdio>
#include <string_view>

#include "suite/brivel/terminal.h"

namespace brivel {
namespace {

constexpr std::chrono::seconds kQuietStart{1};
constexpr std::chrono::milliseconds kBetweenDrawings{100};

}  // namespace

ProgressLine::ProgressLine(int descriptor, Clock::time_point (*now)())
    : descriptor_(descriptor), now_(now), begun_(now()), drawnAt_(begun_) {
  connection::setProgress(this);
}

ProgressLine::~ProgressLine() {
  connection::setProgress(nullptr);
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
  std::array<char, 80> line{};
  const int length = std::snprintf(
      line.data(), line.size(), "\r%" PRIu64 " resources read, %lld s\x1b[K",
      resourcesRead, static_cast<long long>(elapsed));
  drawOn(descriptor_, {line.data(), static_cast<std::size_t>(length)});
  drawn_ = true;
  drawnAt_ = time;
}

void ProgressLine::done() {
  if (drawn_) {
    drawOn(descriptor_, "\r\x1b[K");
    drawn_ = false;
  }
}

}  // namespace brivel
