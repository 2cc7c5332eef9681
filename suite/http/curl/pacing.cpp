#include "suite/http/curl/pacing.h"

#include <algorithm>

namespace http {
namespace {

using std::chrono::milliseconds;

// An opening that is shorter than most answers of most controllers.
constexpr milliseconds kCheapOpening{30};
// What part of a full handshake a resumed one takes, until one was seen.
constexpr int kResumedPart = 4;
// An opening of which an answer takes so much more is cheap.
constexpr int kCheapPart = 4;
// Requests that follow those that wait now, at least, in most runs.
constexpr std::size_t kYetToCome = 4;
// Connections to begin with where opening them takes only the network's time.
constexpr int kDistantWidth = 4;
// Answers to each connection by which its worth is judged. The first ones may
// have been asked for before there were so many.
constexpr int kTurns = 3;
// In such a part more, an answer is still as fast as alone.
constexpr int kNoise = 8;

}  // namespace

Pacing::Pacing(int most, bool secure)
    : most_(std::max(most, 1)), secure_(secure) {}

void Pacing::connected(Duration opening, bool resumed) {
  if (resumed) {
    resumable_ = true;
    resumedOpening_ = resumedOpening_.count() == 0
                          ? opening
                          : std::min(resumedOpening_, opening);
  } else if (fullOpening_.count() == 0) {
    fullOpening_ = std::max(opening, Duration(1));
  }
}

void Pacing::started(int underWay) { reached_ = std::max(reached_, underWay); }

void Pacing::answered(Time now, Duration time, int underWay, bool alone) {
  ++answers_;
  if (alone) {
    alone_ = alone_.count() == 0 ? time : std::min(alone_, time);
  }
  if (distant()) {
    width_ = std::max(width_, kDistantWidth);
  }
  const Duration gap = now - last_;
  last_ = now;
  if (underWay < width_) {
    return;
  }
  ++full_;
  sum_ += time;
  // A processor that is never idle sends an answer in every `underWay`th part
  // of what one takes.
  if (2 * underWay * gap < time) {
    ++together_;
  }
  if (full_ < kTurns * width_) {
    return;
  }
  const bool fast =
      alone_.count() > 0 && sum_ <= full_ * (alone_ + alone_ / kNoise);
  if (fast || 4 * together_ >= full_) {
    width_ = std::min(2 * width_, most_);
  }
  startWindow();
}

int Pacing::limit(std::size_t waiting, bool renewing) const {
  if (!secure_ || multiplexed_) {
    return most_;
  }
  if (fullOpening_.count() == 0 || (!resumable_ && answers_ == 0)) {
    return 1;
  }
  if (renewing) {
    return reached_;
  }
  if (cheap()) {
    return most_;
  }
  const auto gain = static_cast<Duration::rep>(waiting + kYetToCome) * alone_;
  const bool worthwhile = answers_ > 0 && gain >= openingCost();
  return std::max(reached_, worthwhile ? std::min(width_, most_) : 1);
}

Pacing::Duration Pacing::openingCost() const {
  if (resumedOpening_.count() > 0) {
    return resumedOpening_;
  }
  return resumable_ ? fullOpening_ / kResumedPart : fullOpening_;
}

bool Pacing::cheap() const {
  return fullOpening_ <= kCheapOpening ||
         (alone_.count() > 0 && kCheapPart * openingCost() <= alone_);
}

// What took hardly more than an answer for TCP and one for TLS has waited for
// the network rather than for a processor.
bool Pacing::distant() const {
  return alone_.count() > 0 && 2 * fullOpening_ <= 5 * alone_;
}

void Pacing::startWindow() {
  full_ = 0;
  together_ = 0;
  sum_ = Duration(0);
}

}  // namespace http
