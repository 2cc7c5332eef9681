#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace base {

/// Bytes from firmware or a device, which are not trusted: every access is
/// checked, and one past the end returns nullopt. Does not own the bytes.
class ByteView {
 public:
  ByteView() = default;
  explicit ByteView(std::string_view bytes) : bytes_(bytes) {}

  std::size_t size() const { return bytes_.size(); }
  bool empty() const { return bytes_.empty(); }
  std::string_view text() const { return bytes_; }

  /// The byte at an offset.
  std::optional<std::uint8_t> byte(std::size_t offset) const {
    const auto value = number(offset, 1);
    if (!value) {
      return std::nullopt;
    }
    return static_cast<std::uint8_t>(*value);
  }

  /// Little-endian numbers of 2 and 4 bytes at an offset.
  std::optional<std::uint16_t> word(std::size_t offset) const {
    const auto value = number(offset, 2);
    if (!value) {
      return std::nullopt;
    }
    return static_cast<std::uint16_t>(*value);
  }
  std::optional<std::uint32_t> dword(std::size_t offset) const {
    const auto value = number(offset, 4);
    if (!value) {
      return std::nullopt;
    }
    return static_cast<std::uint32_t>(*value);
  }

  /// `length` bytes from an offset; nullopt unless all of them exist.
  std::optional<ByteView> slice(std::size_t offset, std::size_t length) const {
    if (offset > size() || length > size() - offset) {
      return std::nullopt;
    }
    return ByteView(bytes_.substr(offset, length));
  }

  /// All bytes from an offset on; none past the end.
  ByteView from(std::size_t offset) const {
    return ByteView(offset < size() ? bytes_.substr(offset)
                                    : std::string_view());
  }

 private:
  std::optional<std::uint64_t> number(std::size_t offset,
                                      std::size_t width) const {
    if (offset > size() || width > size() - offset) {
      return std::nullopt;
    }
    std::uint64_t value = 0;
    for (std::size_t i = width; i > 0; --i) {
      value =
          (value << 8U) | static_cast<unsigned char>(bytes_[offset + i - 1]);
    }
    return value;
  }

  std::string_view bytes_;
};

}  // namespace base
