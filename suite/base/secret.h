#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace base {

/// Overwrites a text's bytes, up to its capacity, and empties it; the compiler
/// may not drop it. Wipe a text after a move, too: a short one leaves its bytes
/// behind.
void wipe(std::string& text) noexcept;

/// The text with every occurrence of the secret replaced by "***", because a
/// service may repeat what it was sent. Secrets shorter than 4 bytes are not
/// replaced: the garbled text would give away more than it hides.
std::string withoutSecret(std::string text, std::string_view secret);

/// A password or a token in memory: its bytes are overwritten when it dies,
/// moves on or is replaced, and from the first one on the process leaves no
/// core dump.
class Secret {
 public:
  Secret() = default;  ///< Empty.
  /// Takes the text over, and wipes the original.
  explicit Secret(std::string&& text);
  // A secret is made and copied only where the code says so.
  // NOLINTBEGIN(google-explicit-constructor)
  /// Joins the parts. No part of the text stays behind elsewhere in memory.
  explicit Secret(std::initializer_list<std::string_view> parts);
  explicit Secret(const Secret& other) = default;
  // NOLINTEND(google-explicit-constructor)
  Secret(Secret&& other) noexcept;
  Secret& operator=(Secret&& other) noexcept;
  ~Secret();

  const std::string& text() const { return text_; }
  bool empty() const { return text_.empty(); }

  /// Overwrites the text where it stands, and empties it.
  void clear() noexcept { wipe(text_); }

 private:
  std::string text_;
};

}  // namespace base
