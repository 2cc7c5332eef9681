#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace bmc {

/// The bytes of an answer's body, made while they are sent, so that a body may
/// be larger than memory.
class Body {
 public:
  virtual ~Body() = default;

  /// Number of bytes in all; nothing when that is not known beforehand.
  virtual std::optional<std::uint64_t> size() const = 0;

  /// The next bytes, at most `limit` of them; empty at the end. The view is
  /// good until the next call.
  virtual std::string_view next(std::size_t limit) = 0;
};

/// A body that is in memory, shared with whoever keeps it.
class TextBody : public Body {
 public:
  explicit TextBody(std::string text);
  explicit TextBody(std::shared_ptr<const std::string> text);

  std::optional<std::uint64_t> size() const override;
  std::string_view next(std::size_t limit) override;

  const std::string& text() const { return *text_; }

 private:
  std::shared_ptr<const std::string> text_;
  std::size_t sent_ = 0;
};

}  // namespace bmc
