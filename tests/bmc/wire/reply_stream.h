#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "tests/bmc/wire/message.h"

namespace bmc {

/// A reply as the bytes of an HTTP/1.1 message: its head, then its body with
/// the coding and the cut that its delivery asks for.
class ReplyStream {
 public:
  /// `headOnly`: the request was a HEAD. `keepAlive`: the connection stays.
  ReplyStream(Reply reply, bool headOnly, bool keepAlive);

  /// The next bytes, at most `limit`; empty at the end. Good until the next
  /// call.
  std::string_view next(std::size_t limit);

  const Reply& reply() const { return reply_; }

  /// Bytes handed out so far.
  std::uint64_t sent() const { return sent_; }

  /// Whether the body ended before its time.
  bool cut() const { return cut_; }

 private:
  std::string head(bool keepAlive) const;
  void refill();

  Reply reply_;
  bool bodyEnded_;
  bool cut_ = false;
  std::uint64_t bodyBytes_ = 0;
  std::uint64_t sent_ = 0;
  std::string pending_;
  std::size_t taken_ = 0;  ///< Bytes of `pending_` that were handed out.
};

}  // namespace bmc
