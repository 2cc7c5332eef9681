#include "suite/http/response_headers.h"

#include <algorithm>

#include "suite/base/secret.h"
#include "suite/http/transport.h"

namespace http {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

std::string_view trimmed(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) {
    return {};
  }
  return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isNamed(std::string_view name, std::string_view lowerName) {
  return std::equal(name.begin(), name.end(), lowerName.begin(),
                    lowerName.end(),
                    [](char a, char b) { return lower(a) == b; });
}

// Whether a status line ("HTTP/1.1 100 Continue") is that of an interim
// answer.
bool isInterim(std::string_view statusLine) {
  const std::string_view status = trimmed(
      statusLine.substr(std::min(statusLine.find(' '), statusLine.size())));
  return !status.empty() && status.front() == '1';
}

bool isSendable(std::string_view token) {
  return std::all_of(token.begin(), token.end(),
                     [](char c) { return c > ' ' && c <= '~'; });
}

}  // namespace

bool ResponseHeaders::add(std::string_view line) {
  bytes_ += line.size();
  if (tooLarge()) {
    return false;
  }
  if (line.substr(0, 5) == "HTTP/") {
    const std::size_t bytes = bytes_;
    clear();
    bytes_ = bytes;
    interim_ = isInterim(line);
    return true;
  }
  if (complete_ || interim_) {
    return true;
  }
  const std::string_view text = trimmed(line);
  if (text.empty()) {
    complete_ = true;
    return true;
  }
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) {
    return true;
  }
  const std::string_view name = trimmed(text.substr(0, colon));
  const std::string_view value = trimmed(text.substr(colon + 1));
  if (isNamed(name, "location")) {
    location_ = value;
  } else if (isNamed(name, "retry-after")) {
    retryAfter_ = value;
  } else if (isNamed(name, "x-auth-token")) {
    base::wipe(authToken_);
    if (isSendable(value)) {
      authToken_ = value;
    }
  }
  return true;
}

bool ResponseHeaders::tooLarge() const { return bytes_ > kMaxHeaderBytes; }

void ResponseHeaders::clear() noexcept {
  bytes_ = 0;
  complete_ = false;
  interim_ = false;
  location_.clear();
  retryAfter_.clear();
  base::wipe(authToken_);
}

}  // namespace http
