#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace redfish {

/// A link into the service that passed the rules for links (DSP0266 and our
/// own): a path below /redfish/ on the configured origin, with an optional
/// query and fragment, at most 1024 bytes.
class Uri {
 public:
  /// Reads a link as a service writes it. An authority ("https://other/..."
  /// and "//other/...") is dropped, because services behind address
  /// translation name themselves wrongly and no second origin is ever asked.
  /// Returns nullopt if the link is refused: another path, another scheme than
  /// http and https, a "." or ".." segment, a backslash or a control character
  /// (encoded or not), too long.
  static std::optional<Uri> parse(std::string_view link);

  /// Whether `parse` accepts a link.
  static bool isAllowed(std::string_view link);

  /// What is sent: path and query, without the fragment; characters that must
  /// not stand in a request line are percent-encoded.
  const std::string& target() const { return target_; }

  /// Key of the document: the path without trailing slash, unreserved
  /// percent-escapes decoded, query kept, fragment dropped. Two links to one
  /// document have equal keys.
  const std::string& document() const {
    return document_.empty() ? target_ : document_;
  }

  /// The fragment, a JSON pointer (RFC 6901) into the document, decoded from
  /// its percent-escapes; empty for the whole document.
  const std::string& fragment() const { return fragment_; }

  /// Key of what the link points at: the document's key, then "#" and the
  /// fragment where there is one.
  std::string identity() const;

  /// Last segment of the fragment, else of the path. What is called by nothing
  /// else is called by it.
  std::string_view lastSegment() const;

 private:
  std::string target_;
  std::string document_;  ///< Empty: the same as the target.
  std::string fragment_;
};

/// A text with its percent-escapes decoded; a "%" that starts none stays.
std::string decodePercent(std::string_view text);

}  // namespace redfish
