#include "suite/redfish/graph/uri.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "suite/base/ascii.h"

namespace redfish {
namespace {

constexpr std::size_t kMaxLinkBytes = 1024;
constexpr std::string_view kServicePrefix = "/redfish/";

// The characters that mean the same with and without a percent-escape
// (RFC 3986, section 2.3).
bool isUnreserved(char c) {
  return base::isAlphanumeric(c) ||
         std::string_view("-._~").find(c) != std::string_view::npos;
}

// What may stand in a path, a query or a fragment as it is (RFC 3986,
// section 3.3 to 3.5).
bool isAllowed(char c) {
  return isUnreserved(c) ||
         std::string_view("!$&'()*+,;=:@/?").find(c) != std::string_view::npos;
}

bool isControl(char c) {
  return static_cast<std::uint8_t>(c) < 0x20 || c == 0x7F;
}

int hexValue(char c) {
  if (base::isDigit(c)) {
    return c - '0';
  }
  const char letter = base::lower(c);
  return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

// The byte that the percent-escape at a place stands for; nullopt if none
// is there.
std::optional<char> escapeAt(std::string_view text, std::size_t index) {
  if (text[index] != '%' || text.size() - index < 3) {
    return std::nullopt;
  }
  const int high = hexValue(text[index + 1]);
  const int low = hexValue(text[index + 2]);
  if (high < 0 || low < 0) {
    return std::nullopt;
  }
  return static_cast<char>(high * 16 + low);
}

void appendEscape(std::string& text, char c) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  const auto byte = static_cast<std::uint8_t>(c);
  text += '%';
  text += kDigits[byte >> 4U];
  text += kDigits[byte & 0x0FU];
}

// One spelling for all spellings of a text: escapes of unreserved characters
// decoded, the others in upper case, and what must not stand as it is (a
// blank, a letter with an accent, a lone "%") escaped.
std::string normalize(std::string_view text) {
  std::string normal;
  normal.reserve(text.size());
  for (std::size_t index = 0; index < text.size(); ++index) {
    const std::optional<char> escaped = escapeAt(text, index);
    const char c = escaped.value_or(text[index]);
    if (escaped ? isUnreserved(c) : isAllowed(c)) {
      normal += c;
    } else {
      appendEscape(normal, c);
    }
    if (escaped) {
      index += 2;
    }
  }
  return normal;
}

bool hasForbidden(std::string_view text) {
  return std::any_of(text.begin(), text.end(),
                     [](char c) { return isControl(c) || c == '\\'; });
}

// Whether a decoded path holds a "." or ".." segment.
bool hasDotSegment(std::string_view path) {
  while (!path.empty()) {
    const std::string_view segment = path.substr(0, path.find('/'));
    if (segment == "." || segment == "..") {
      return true;
    }
    path.remove_prefix(std::min(segment.size() + 1, path.size()));
  }
  return false;
}

// The link without scheme and authority; nullopt if the scheme is none
// that a Redfish service is reached by.
std::optional<std::string_view> withoutAuthority(std::string_view link) {
  const std::size_t scheme = link.find("://");
  const std::size_t path = link.find_first_of("/?#");
  if (scheme != std::string_view::npos && path == scheme + 1) {
    const std::string name = base::lowerCase(link.substr(0, scheme));
    if (name != "https" && name != "http") {
      return std::nullopt;
    }
    link.remove_prefix(scheme + 1);
  }
  if (!base::startsWith(link, "//")) {
    return link;
  }
  const std::size_t end = link.find_first_of("/?#", 2);
  return end == std::string_view::npos ? std::string_view() : link.substr(end);
}

// The bytes that are plain anywhere in a path, except a dot that begins a
// segment.
constexpr std::array<bool, 256> plainBytes() {
  std::array<bool, 256> plain{};
  for (const char c : std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                       "abcdefghijklmnopqrstuvwxyz"
                                       "0123456789/-_:.")) {
    plain[static_cast<std::uint8_t>(c)] = true;
  }
  return plain;
}

// Whether a link is as nearly all are: a path of the service in which there is
// nothing to decode, to escape or to refuse.
bool isPlain(std::string_view link) {
  static constexpr std::array<bool, 256> kPlain = plainBytes();
  if (!base::startsWith(link, kServicePrefix)) {
    return false;
  }
  char last = '/';
  for (const char c : link) {
    if (!kPlain[static_cast<std::uint8_t>(c)] || (c == '.' && last == '/')) {
      return false;
    }
    last = c;
  }
  return true;
}

std::string withoutEndingSlashes(std::string path) {
  while (path.back() == '/') {
    path.pop_back();
  }
  return path;
}

}  // namespace

std::optional<Uri> Uri::parse(std::string_view link) {
  if (link.size() > kMaxLinkBytes) {
    return std::nullopt;
  }
  Uri uri;
  if (isPlain(link)) {
    uri.target_ = link;
    if (link.back() == '/') {
      uri.document_ = withoutEndingSlashes(uri.target_);
    }
    return uri;
  }
  if (hasForbidden(link)) {
    return std::nullopt;
  }
  const std::optional<std::string_view> rest = withoutAuthority(link);
  if (!rest) {
    return std::nullopt;
  }

  const std::string_view beforeFragment = rest->substr(0, rest->find('#'));
  const std::string_view path =
      beforeFragment.substr(0, beforeFragment.find('?'));
  const std::string_view query = beforeFragment.substr(path.size());
  const std::string_view fragment =
      rest->substr(std::min(beforeFragment.size() + 1, rest->size()));

  const std::string decodedPath = decodePercent(path);
  uri.fragment_ = decodePercent(fragment);
  if (hasForbidden(decodedPath) || hasDotSegment(decodedPath) ||
      hasForbidden(decodePercent(query)) || hasForbidden(uri.fragment_)) {
    return std::nullopt;
  }
  const std::string normalPath = normalize(path);
  if (!base::startsWith(normalPath, kServicePrefix)) {
    return std::nullopt;
  }
  const std::string normalQuery = normalize(query);
  uri.target_ = normalPath + normalQuery;
  uri.document_ = withoutEndingSlashes(normalPath) + normalQuery;
  return uri;
}

bool Uri::isAllowed(std::string_view link) {
  return (link.size() <= kMaxLinkBytes && isPlain(link)) || parse(link);
}

std::string Uri::identity() const {
  return fragment_.empty() ? document() : document() + '#' + fragment_;
}

std::string_view Uri::lastSegment() const {
  std::string_view text = fragment_;
  if (text.empty()) {
    text = document();
    text = text.substr(0, text.find('?'));
  }
  while (!text.empty() && text.back() == '/') {
    text.remove_suffix(1);
  }
  return text.substr(text.rfind('/') + 1);
}

std::string decodePercent(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t index = 0; index < text.size(); ++index) {
    const std::optional<char> escaped = escapeAt(text, index);
    decoded += escaped.value_or(text[index]);
    if (escaped) {
      index += 2;
    }
  }
  return decoded;
}

}  // namespace redfish
