#pragma once

#include <chrono>
#include <cstddef>

namespace http {

/// Learns from a server's handshakes and answers how many requests are worth
/// having under way, where each one needs a connection of its own (HTTP/1.1).
///
/// A management controller may have one slow processor: a TLS handshake takes
/// it for tenths of a second, and requests side by side wait for one another.
/// Others answer any number of requests at once. What is known when shows
/// which of the two it is:
///
/// - Until the first connection stands there is one, so that the others can
///   take up its TLS session instead of a full handshake.
/// - Where opening one more costs little beside an answer, nothing is held
///   back.
/// - Where it costs much, there is a second one once enough requests wait for
///   it (four where the opening seems to have waited for the network), and then
///   twice as many each time that answers side by side come as fast as alone,
///   or several at once: a processor that is the bottleneck does neither.
///
/// Reads no clock: times are told.
class Pacing {
 public:
  using Duration = std::chrono::microseconds;
  /// A point of time since any start.
  using Time = std::chrono::microseconds;

  /// At most `most` requests under way, at least 1. `secure` is whether
  /// connections have a TLS handshake: without one they cost nothing.
  Pacing(int most, bool secure);

  /// A connection stands, that long after its opening began. `resumed` is
  /// whether it took up an earlier TLS session.
  void connected(Duration opening, bool resumed);

  /// A TLS session was granted: further connections can take it up.
  void sessionKept() { resumable_ = true; }

  /// Whether the server carries all requests over one connection (HTTP/2).
  void setMultiplexed(bool multiplexed) { multiplexed_ = multiplexed; }

  /// One more request went out; so many are under way with it.
  void started(int underWay);

  /// An answer came at `now`, that long after its request was sent.
  /// `underWay` are the requests that the server had when it came, it included;
  /// `alone` is whether there was no other one in all that time.
  void answered(Time now, Duration time, int underWay, bool alone);

  /// How many requests may be under way while `waiting` more are there.
  /// `renewing` is whether a session is being taken up and no new one granted
  /// yet: in TLS 1.3 each serves once, so that nothing is opened then.
  int limit(std::size_t waiting, bool renewing = false) const;

 private:
  /// What opening one more connection takes, as far as is known.
  Duration openingCost() const;
  /// Whether a further connection costs next to nothing.
  bool cheap() const;
  bool distant() const;
  void startWindow();

  int most_;
  bool secure_;
  bool multiplexed_ = false;
  bool resumable_ = false;
  Duration fullOpening_{0};     ///< Of the first connection; 0: not yet.
  Duration resumedOpening_{0};  ///< Of the fastest one that resumed.
  Duration alone_{0};           ///< Fastest answer without others; 0: none.
  int answers_ = 0;
  int reached_ = 1;  ///< Most requests that have been under way.

  // Since the limit was last raised: answers with as many under way.
  int width_ = 2;  ///< Connections where they cost much.
  int full_ = 0;
  int together_ = 0;  ///< Of them: came with another one.
  Duration sum_{0};
  Time last_{0};  ///< Of the last answer.
};

}  // namespace http
