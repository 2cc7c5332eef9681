#include "suite/redfish/recording/body_masking.h"

#include <algorithm>

#include "suite/base/ascii.h"
#include "suite/redfish/graph/json.h"
#include "suite/redfish/recording/json_text.h"

namespace redfish {
namespace {

// Shorter numbers count things rather than name one.
constexpr std::size_t kShortestNumber = 4;
// Longer ones are beyond what 64 bits hold.
constexpr std::size_t kLongestNumber = 18;

bool isWord(std::string_view text) {
  return std::all_of(text.begin(), text.end(), base::isLetter);
}

bool isIdentifyingNumber(const JsonToken& token) {
  return token.kind == JsonToken::Kind::kNumber &&
         token.value.size() >= kShortestNumber &&
         token.value.size() <= kLongestNumber && token.role.identifying;
}

// Whether a text is the value of an identifying member and no link to it.
bool isIdentifyingText(const JsonToken& token) {
  return token.kind == JsonToken::Kind::kText && token.role.identifying &&
         !base::startsWith(token.value, "/redfish/");
}

std::string blackened(std::string_view text) {
  std::string black(text);
  std::replace_if(black.begin(), black.end(), base::isAlphanumeric, 'X');
  return black;
}

std::string maskToken(const JsonToken& token, masking::Masker& masker) {
  if (token.kind == JsonToken::Kind::kNumber) {
    return isIdentifyingNumber(token) ? masker.value(token.value)
                                      : std::string(token.value);
  }
  if (token.kind == JsonToken::Kind::kText && token.role.format) {
    return std::string(token.value);
  }
  if (token.kind == JsonToken::Kind::kText && token.role.secret) {
    return blackened(token.value);
  }
  if (isIdentifyingText(token)) {
    return masker.value(token.value);
  }
  return masker.text(token.value);
}

}  // namespace

void noteBody(std::string_view body, masking::Masker& masker) {
  forEachToken(body, [&masker](const JsonToken& token) {
    const bool text = token.kind == JsonToken::Kind::kText;
    if (token.kind == JsonToken::Kind::kName) {
      if (isWord(token.value)) {
        masker.keep(token.value);
      }
    } else if (text && (token.role.format || token.role.version)) {
      masker.keep(token.value);
    } else if (isIdentifyingText(token) || isIdentifyingNumber(token)) {
      masker.note(token.value);
    }
  });
}

std::string maskBody(std::string_view body, masking::Masker& masker) {
  if (!parseObject(body)) {
    return masker.text(body);
  }
  return withTokens(body, [&masker](const JsonToken& token) {
    return maskToken(token, masker);
  });
}

}  // namespace redfish
