#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/bmc/wire/body.h"

namespace bmc {

/// A piece of a generated body.
struct BodyPart {
  /// Sent `times` times. A run of nine "#" in it is replaced by the number of
  /// the repetition, from 0, with nine digits.
  std::string text;
  std::uint64_t times = 1;
};

/// A body out of parts, made while it is sent and therefore of any length.
class GeneratedBody : public Body {
 public:
  explicit GeneratedBody(std::vector<BodyPart> parts);

  std::optional<std::uint64_t> size() const override;
  std::string_view next(std::size_t limit) override;

 private:
  void refill(std::size_t wanted);

  std::vector<BodyPart> parts_;
  std::size_t part_ = 0;          ///< The part under way,
  std::uint64_t repetition_ = 0;  ///< and its next repetition.
  std::string pending_;
  std::size_t taken_ = 0;  ///< Bytes of `pending_` that were handed out.
};

/// `count` bytes without meaning, the same ones every time.
std::string noise(std::size_t count);

}  // namespace bmc
