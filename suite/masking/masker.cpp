#include "suite/masking/masker.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "suite/base/ascii.h"
#include "suite/base/filler.h"
#include "suite/base/time_limit.h"
#include "suite/masking/address_forms.h"

namespace masking {
namespace {

constexpr std::size_t kShortestWord = 4;
constexpr std::size_t kShortestNumber = 6;
constexpr std::size_t kShortestAnywhere = 8;
// So much of a text is searched for values at a time.
constexpr std::size_t kBlock = 65536;

// Whether a value is told from ordinary words by its form, so that it can be
// looked for inside of words too.
bool isUnmistakable(std::string_view value) {
  return value.size() >= kShortestAnywhere &&
         std::any_of(value.begin(), value.end(), base::isDigit) &&
         std::any_of(value.begin(), value.end(), base::isLetter) &&
         std::all_of(value.begin(), value.end(), base::isAlphanumeric);
}

bool isDistinct(std::string_view value) {
  const bool number = std::all_of(value.begin(), value.end(), base::isDigit);
  return value.size() >= (number ? kShortestNumber : kShortestWord) &&
         !base::isFiller(value);
}

// A value as it stands in a link (RFC 3986, section 2.1).
std::string percentEncoded(std::string_view value) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  constexpr std::string_view kAllowed = "-._~!$&'()*+,;=:@";
  std::string encoded;
  for (const char c : value) {
    if (base::isAlphanumeric(c) || kAllowed.find(c) != std::string_view::npos) {
      encoded += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    encoded += '%';
    encoded += kDigits[byte >> 4U];
    encoded += kDigits[byte & 0xFU];
  }
  return encoded;
}

}  // namespace

void Masker::note(std::string_view value) {
  value = base::trimmed(value);
  // Longer ones are not looked for in texts.
  if (value.empty() || value.size() > NotedValues::kLongest ||
      base::isFiller(value)) {
    return;
  }
  if (notedBytes_ + value.size() > kMostNoted) {
    exceeded_ = exceeded_ || noted_.count(std::string(value)) == 0;
  } else if (noted_.emplace(value).second) {
    notedBytes_ += value.size();
    prepared_ = false;
  }
}

void Masker::keep(std::string_view word) {
  if (keptBytes_ + word.size() <= kMostNoted &&
      kept_.insert(base::lowerCase(word)).second) {
    keptBytes_ += word.size();
    prepared_ = false;
  }
}

std::string Masker::value(std::string_view value) {
  prepare();
  const std::string_view core = base::trimmed(value);
  if (core.empty()) {
    return std::string(value);
  }
  // Blanks around it, which firmware fills fields with, stay.
  const auto begin = static_cast<std::size_t>(core.data() - value.data());
  return std::string(value).replace(begin, core.size(), replacements_.of(core));
}

std::string Masker::text(std::string_view text) {
  prepare();
  std::string masked;
  masked.reserve(text.size());
  std::vector<std::uint8_t> lengths;  // Of noted values, from `begin` on.
  std::size_t begin = 0;
  for (std::size_t i = 0; i < text.size();) {
    base::heedTime();
    if (i >= begin + lengths.size()) {
      begin = i;
      lengths =
          values_.lengths(text, begin, std::min(begin + kBlock, text.size()));
    }
    const std::size_t noted = lengths[i - begin];
    const std::size_t address = addressAt(text, i);
    const std::size_t length = std::max(noted, address);
    if (length == 0) {
      masked += text[i++];
      continue;
    }
    const std::string found(text.substr(i, length));
    i += length;
    const auto encoded = encoded_.find(base::lowerCase(found));
    if (length > noted && isIpv4(found) && kept_.count(found) != 0) {
      masked += found;
    } else if (encoded != encoded_.end()) {
      masked += encoded->second;
    } else {
      masked += replacements_.of(found);
    }
  }
  return masked;
}

// Makes ready what is looked for in texts.
void Masker::prepare() {
  if (prepared_) {
    return;
  }
  prepared_ = true;
  values_ = NotedValues();
  encoded_.clear();
  for (const std::string& value : noted_) {
    replacements_.reserve(value);
  }
  for (const std::string& value : noted_) {
    if (!isDistinct(value) || kept_.count(base::lowerCase(value)) != 0) {
      continue;
    }
    values_.add(value, isUnmistakable(value));
    const std::string normal = normalForm(value);
    values_.add(normal, isUnmistakable(normal));
    const std::string encoded = percentEncoded(value);
    if (encoded != value) {
      values_.add(encoded, false);
      encoded_[base::lowerCase(encoded)] =
          percentEncoded(replacements_.of(value));
    }
  }
  values_.prepare();
}

}  // namespace masking
