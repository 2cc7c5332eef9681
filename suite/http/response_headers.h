#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "suite/base/secret.h"

namespace http {

/// Collects the headers of an answer that are used, line by line. Interim
/// answers (1xx) and trailers are ignored; the last of repeated headers
/// counts.
class ResponseHeaders {
 public:
  /// Takes a line as received, status lines and empty ones included. Returns
  /// false if the lines of this answer together exceed the limit.
  bool add(std::string_view line);

  bool begun() const { return bytes_ > 0; }  ///< A line was received.
  bool tooLarge() const;

  /// Whether the body may be decoded: it has at most one content coding, and
  /// that is gzip (RFC 9110, 8.4). Nested codings let an answer of a few
  /// kilobytes grow without end. Those of interim answers count, too.
  bool decodable() const { return codings_ == 0 || (codings_ == 1 && gzip_); }

  const std::string& location() const { return location_; }

  /// Retry-After as it stands. A date becomes the seconds from the answer's own
  /// Date until then, where there is one: the clocks of the two sides may
  /// differ, and this one's may jump.
  std::string retryAfter() const;

  /// The token of X-Auth-Token; empty if there is none, or if it cannot be
  /// sent back in a header.
  const base::Secret& authToken() const { return authToken_; }

  /// Forgets everything.
  void clear() noexcept;

 private:
  void addCodings(std::string_view list);

  std::size_t bytes_ = 0;
  bool complete_ = false;  ///< The empty line after the final headers came.
  bool interim_ = false;
  int codings_ = 0;    ///< Named so far, "identity" left out.
  bool gzip_ = false;  ///< The last one of them is gzip.
  std::string location_;
  std::string retryAfter_;
  std::string date_;
  base::Secret authToken_;
};

}  // namespace http
