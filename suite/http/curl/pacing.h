#pragma once

#include <chrono>
#include <cstddef>

namespace http {

/// Learns from a server's handshakes and answers how many connections are
/// worth having, where each one carries one request at a time (HTTP/1.1).
///
/// A management controller may have one slow processor: a TLS handshake takes
/// it for tenths of a second, and requests side by side wait for one another.
/// Others answer any number of requests at once. What is known when shows
/// which of the two it is:
///
/// - Until the first connection stands there is one, so that the others can
///   take up its TLS session instead of a full handshake.
/// - Where opening one more costs little beside an answer, or takes only the
///   network's time, nothing is held back.
/// - Where it costs much, there is a second one if enough requests can be
///   expected; beside the login there always is, as a slow processor does its
///   handshake while nothing else can be asked. Then there are twice as many
///   each time that answers side by side come as fast as alone, or several at
///   once: a processor that is the bottleneck does neither.
/// - A server that does not keep connections open gets a new one for each
///   request whatever is done, so that nothing is held back either.
///
/// Reads no clock: callers pass the times.
class Pacing {
 public:
  using Duration = std::chrono::microseconds;
  /// A point of time since any start.
  using Time = std::chrono::microseconds;

  /// At most `most` connections, at least 1. `secure` is whether they have a
  /// TLS handshake: without one they cost nothing.
  Pacing(int most, bool secure);

  /// A connection stands, that long after its opening began. `network` is what
  /// the round trips of the network took of that, as far as is known, and
  /// `resumed` whether it took up an earlier TLS session.
  void connected(Duration opening, Duration network, bool resumed);

  /// A TLS session was granted: further connections can take it up.
  void sessionKept() { resumable_ = true; }

  /// Whether the server carries all requests over one connection (HTTP/2).
  void setMultiplexed(bool multiplexed) { multiplexed_ = multiplexed; }

  /// A connection that was to be used again had been closed by the server.
  void closedByServer() { ++closed_; }

  /// One more request went out; so many are under way with it.
  void started(int underWay);

  /// An answer came at `now`, that long after its request was sent.
  /// `underWay` are the requests that the server had when it came, it included;
  /// `alone` is whether there was no other one in all that time, `read` whether
  /// it was a read: a login is no measure for what those take.
  void answered(Time now, Duration time, int underWay, bool alone, bool read);

  /// Whether connections are to be opened by themselves, ahead of requests,
  /// which then take whichever is free first. Otherwise each request opens its
  /// own, or uses one that is there.
  bool ahead() const;

  /// How many connections are worth having for so many requests, waiting or
  /// under way.
  int limit(std::size_t requests) const;

 private:
  /// What opening one more connection takes, as far as is known.
  Duration openingCost() const;
  /// Whether a further connection costs next to nothing.
  bool cheap() const;
  /// Whether connections may take, and do take, only the network's time.
  bool mayBeDistant() const;
  bool distant() const;
  bool worthwhile(std::size_t requests) const;
  void startWindow();

  int most_;
  bool secure_;
  bool multiplexed_ = false;
  bool resumable_ = false;
  int closed_ = 0;
  Duration fullOpening_{0};     ///< Of the first connection; 0: not yet.
  Duration fullNetwork_{0};     ///< The network's part of it.
  Duration resumedOpening_{0};  ///< Of the fastest one that resumed.
  Duration alone_{0};           ///< Fastest answer without others; 0: none.
  Duration aloneRead_{0};       ///< The same of reads.
  int answers_ = 0;
  int reached_ = 1;      ///< Most requests that have been under way.
  bool queued_ = false;  ///< The last answer had to wait for others.

  // Since the limit was last raised: answers with as many under way.
  int width_ = 2;  ///< Connections where they cost much.
  int full_ = 0;
  int together_ = 0;  ///< Of them: came with another one.
  Duration sum_{0};
  Time last_{0};  ///< Of the last answer.
};

}  // namespace http
