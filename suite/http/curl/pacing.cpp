#include "suite/http/curl/pacing.h"

#include <algorithm>

namespace http {
namespace {

using std::chrono::milliseconds;

// An opening that, without the network's part, is shorter than most answers of
// most controllers.
constexpr milliseconds kCheapOpening{30};
// Of an opening: TCP's, and those of TLS 1.2.
constexpr int kMostRoundTrips = 3;
// What part of a full handshake a resumed one takes, until one was seen.
constexpr int kResumedPart = 4;
// An opening of which an answer takes so much more is cheap.
constexpr int kCheapPart = 3;
// Requests that follow those that are there now, at least, in most runs.
constexpr std::size_t kYetToCome = 4;
// Answers to each connection by which its worth is judged. The first ones may
// have been asked for before there were so many.
constexpr int kTurns = 3;
// In such a part more, an answer is still as fast as alone.
constexpr int kNoise = 8;
// In such a part more, it has waited for another one.
constexpr int kQueued = 4;
// Connections found closed, by which a server is known to keep none.
constexpr int kMostClosed = 2;

// The lesser one; 0 is none yet.
Pacing::Duration leastOf(Pacing::Duration known, Pacing::Duration time) {
  return known.count() == 0 ? time : std::min(known, time);
}

}  // namespace

Pacing::Pacing(int most, bool secure)
    : most_(std::max(most, 1)), secure_(secure) {}

void Pacing::connected(Duration opening, Duration network, bool resumed) {
  if (resumed) {
    resumable_ = true;
    resumedOpening_ = leastOf(resumedOpening_, opening);
  } else if (fullOpening_.count() == 0) {
    fullOpening_ = std::max(opening, Duration(1));
    fullNetwork_ = network;
  }
}

void Pacing::started(int underWay) { reached_ = std::max(reached_, underWay); }

void Pacing::answered(Time now, Duration time, int underWay, bool alone,
                      bool read) {
  ++answers_;
  if (alone) {
    alone_ = leastOf(alone_, time);
  }
  if (alone && read) {
    aloneRead_ = leastOf(aloneRead_, time);
  }
  const Duration gap = now - last_;
  last_ = now;
  // A processor that is never idle sends an answer in every `underWay`th part
  // of what one takes.
  const bool together = 2 * underWay * gap < time;
  queued_ = underWay > 1 && !together && time > alone_ + alone_ / kQueued;
  if (underWay < width_) {
    return;
  }
  ++full_;
  sum_ += time;
  together_ += together ? 1 : 0;
  if (full_ < (mayBeDistant() ? 1 : kTurns) * width_) {
    return;
  }
  const bool fast =
      alone_.count() > 0 && sum_ <= full_ * (alone_ + alone_ / kNoise);
  if (fast || 4 * together_ >= full_) {
    width_ = std::min(2 * width_, most_);
  }
  startWindow();
}

bool Pacing::ahead() const {
  return secure_ && !multiplexed_ && closed_ < kMostClosed;
}

int Pacing::limit(std::size_t requests) const {
  if (!ahead()) {
    return most_;
  }
  if (fullOpening_.count() == 0 || (!resumable_ && answers_ == 0)) {
    return 1;
  }
  if (cheap() || distant()) {
    return most_;
  }
  return std::max(reached_, worthwhile(requests) ? std::min(width_, most_) : 1);
}

bool Pacing::worthwhile(std::size_t requests) const {
  if (answers_ == 0) {
    return resumable_;
  }
  const auto turns = static_cast<Duration::rep>(requests + kYetToCome);
  return turns * aloneRead_ >= openingCost();
}

Pacing::Duration Pacing::openingCost() const {
  if (resumedOpening_.count() > 0) {
    return resumedOpening_;
  }
  return resumable_ ? fullOpening_ / kResumedPart : fullOpening_;
}

bool Pacing::cheap() const {
  // No round trip takes longer than an answer: TCP has tried another address
  // before, or lost a packet.
  const Duration network = std::min(fullNetwork_, kMostRoundTrips * alone_);
  return fullOpening_ - network <= kCheapOpening ||
         (aloneRead_.count() > 0 && kCheapPart * openingCost() <= aloneRead_);
}

// What takes hardly more than an answer for TCP and one for TLS.
bool Pacing::mayBeDistant() const {
  return alone_.count() > 0 && 2 * fullOpening_ <= 5 * alone_;
}

// A processor does a handshake that resumes a session in less time than a full
// one. Where both take as long, they wait for the network.
bool Pacing::distant() const {
  return mayBeDistant() && !queued_ && resumedOpening_.count() > 0 &&
         4 * resumedOpening_ >= 3 * fullOpening_;
}

void Pacing::startWindow() {
  full_ = 0;
  together_ = 0;
  sum_ = Duration(0);
}

}  // namespace http
