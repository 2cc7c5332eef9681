#include "suite/http/response_headers.h"

#include <algorithm>
#include <ctime>
#include <string>

#include "suite/base/ascii.h"
#include "suite/http/http_date.h"
#include "suite/http/transport.h"

namespace http {
namespace {

// Whether a status line ("HTTP/1.1 100 Continue") is that of an interim
// answer.
bool isInterim(std::string_view statusLine) {
  const std::string_view status = base::trimmed(
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
    complete_ = false;
    interim_ = isInterim(line);
    location_.clear();
    retryAfter_.clear();
    date_.clear();
    authToken_.clear();
    return true;
  }
  const std::string_view text = base::trimmed(line);
  if (text.empty()) {
    complete_ = !interim_;
    return true;
  }
  const std::size_t colon = text.find(':');
  if (colon == std::string_view::npos) {
    return true;
  }
  const std::string_view name = base::trimmed(text.substr(0, colon));
  const std::string_view value = base::trimmed(text.substr(colon + 1));
  if (base::equalIgnoringCase(name, "content-encoding")) {
    addCodings(value);
  }
  if (complete_ || interim_) {
    return true;
  }
  if (base::equalIgnoringCase(name, "location")) {
    location_ = value;
  } else if (base::equalIgnoringCase(name, "retry-after")) {
    retryAfter_ = value;
  } else if (base::equalIgnoringCase(name, "date")) {
    date_ = value;
  } else if (base::equalIgnoringCase(name, "x-auth-token")) {
    authToken_ = isSendable(value) ? base::Secret({value}) : base::Secret();
  }
  return true;
}

void ResponseHeaders::addCodings(std::string_view list) {
  while (!list.empty()) {
    const std::size_t comma = std::min(list.find(','), list.size());
    const std::string_view coding = base::trimmed(list.substr(0, comma));
    if (!coding.empty() && !base::equalIgnoringCase(coding, "identity")) {
      ++codings_;
      gzip_ = base::equalIgnoringCase(coding, "gzip") ||
              base::equalIgnoringCase(coding, "x-gzip");
    }
    list.remove_prefix(std::min(comma + 1, list.size()));
  }
}

std::string ResponseHeaders::retryAfter() const {
  const auto until = parseDate(retryAfter_);
  const auto from = parseDate(date_);
  return until && from
             ? std::to_string(std::max<std::time_t>(*until - *from, 0))
             : retryAfter_;
}

bool ResponseHeaders::tooLarge() const { return bytes_ > kMaxHeaderBytes; }

void ResponseHeaders::clear() noexcept {
  bytes_ = 0;
  complete_ = false;
  interim_ = false;
  codings_ = 0;
  gzip_ = false;
  location_.clear();
  retryAfter_.clear();
  date_.clear();
  authToken_.clear();
}

}  // namespace http
