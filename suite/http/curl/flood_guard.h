#pragma once

#include <openssl/ssl.h>

#include "suite/base/clock.h"
#include "suite/http/interrupt_watch.h"

namespace http {

/// Ends connections that keep libcurl busy past its time.
///
/// libcurl reads an HTTP/2 connection (RFC 9113) until nothing more is there,
/// or until an answer goes on. A server that sends frames which carry nothing
/// on (WINDOW_UPDATE, PING, empty DATA) as fast as they are read holds such a
/// call for as long as it likes, and libcurl asks no callback of a transfer
/// meanwhile. OpenSSL tells of each record; here the time and the user's wish
/// to end are looked at, and the connection is made to look closed.
class FloodGuard {
 public:
  /// `interrupt` outlives this.
  explicit FloodGuard(const InterruptWatch& interrupt)
      : interrupt_(interrupt) {}

  FloodGuard(const FloodGuard&) = delete;
  FloodGuard& operator=(const FloodGuard&) = delete;

  /// Watches the connections of a context, which do not outlive this.
  void watch(SSL_CTX* context);

  /// A call of libcurl begins that has to be over by `end`.
  void begin(base::Clock::time_point end);

  /// Whether the call has gone on for too long: past its end, or past an
  /// interrupt. One that has only begun is never too long.
  bool exceeded() const;

 private:
  const InterruptWatch& interrupt_;
  base::Clock::time_point begun_;
  base::Clock::time_point end_ = base::Clock::time_point::max();
};

}  // namespace http
