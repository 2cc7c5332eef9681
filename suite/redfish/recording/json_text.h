#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "suite/redfish/recording/property_names.h"

namespace redfish {

/// One text or number in a body of JSON.
struct JsonToken {
  enum class Kind {
    kName,    ///< The name of a member.
    kText,    ///< A string.
    kNumber,  ///< A whole number without a sign.
  };
  Kind kind = Kind::kText;
  /// Of the member that it is the value of, or that holds the array that it
  /// stands in.
  PropertyRole role;
  std::string_view value;  ///< Without escapes and quotation marks.
};

/// Calls `use` with each token of a text, in its order. The text need not be
/// valid JSON: what is understood of it is told. Takes time and room in
/// proportion to the text.
void forEachToken(std::string_view text,
                  const std::function<void(const JsonToken&)>& use);

/// A text of valid JSON with what `change` returns in the place of each token's
/// value. Everything between them, and each token that `change` returns as it
/// was, stays byte for byte.
std::string withTokens(
    std::string_view text,
    const std::function<std::string(const JsonToken&)>& change);

}  // namespace redfish
