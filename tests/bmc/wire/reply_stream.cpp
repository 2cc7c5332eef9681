#include "tests/bmc/wire/reply_stream.h"

#include <algorithm>
#include <boost/beast/http/status.hpp>
#include <cstdio>
#include <utility>

namespace bmc {
namespace {

constexpr std::size_t kBlock = 64 * 1024;

// Statuses whose messages have neither body nor length (RFC 9110).
bool hasNoBody(int status) {
  return status == 204 || status == 304 || status < 200;
}

std::string chunk(std::string_view bytes) {
  char size[24];
  static_cast<void>(  // The buffer holds any 64-bit number.
      std::snprintf(size, sizeof size, "%zx\r\n", bytes.size()));
  return std::string(size).append(bytes).append("\r\n");
}

}  // namespace

ReplyStream::ReplyStream(Reply reply, bool headOnly, bool keepAlive)
    : reply_(std::move(reply)),
      bodyEnded_(headOnly || reply_.body == nullptr ||
                 hasNoBody(reply_.status)),
      pending_(head(keepAlive)) {
  if (!bodyEnded_) {
    refill();
  }
}

std::string ReplyStream::head(bool keepAlive) const {
  const auto reason = boost::beast::http::obsolete_reason(
      static_cast<boost::beast::http::status>(reply_.status));
  std::string text = "HTTP/1.1 " + std::to_string(reply_.status) + " ";
  text.append(reason.data(), reason.size()).append("\r\n");
  for (const auto& [name, value] : reply_.headers) {
    text.append(name).append(": ").append(value).append("\r\n");
  }

  const bool framed = !headerOf(reply_.headers, "Content-Length").empty() ||
                      !headerOf(reply_.headers, "Transfer-Encoding").empty();
  const auto size = reply_.body ? reply_.body->size() : 0;
  if (reply_.delivery.chunked) {
    text += "Transfer-Encoding: chunked\r\n";
  } else if (!framed && !hasNoBody(reply_.status) && size) {
    text += "Content-Length: " + std::to_string(*size) + "\r\n";
  }
  if (headerOf(reply_.headers, "Connection").empty()) {
    text += keepAlive ? "Connection: keep-alive\r\n" : "Connection: close\r\n";
  }
  return text + "\r\n";
}

std::string_view ReplyStream::next(std::size_t limit) {
  if (taken_ == pending_.size()) {
    pending_.clear();
    taken_ = 0;
    if (!bodyEnded_) {
      refill();
    }
  }
  std::string_view bytes = pending_;
  bytes = bytes.substr(taken_, limit);
  taken_ += bytes.size();
  sent_ += bytes.size();
  return bytes;
}

void ReplyStream::refill() {
  const Delivery& delivery = reply_.delivery;
  std::size_t limit = kBlock;
  if (delivery.cutAfter) {
    limit = static_cast<std::size_t>(
        std::min<std::uint64_t>(limit, *delivery.cutAfter - bodyBytes_));
  }
  const std::string_view bytes =
      limit == 0 ? std::string_view() : reply_.body->next(limit);
  bodyBytes_ += bytes.size();
  if (bytes.empty()) {
    bodyEnded_ = true;
    cut_ = limit == 0;
    if (delivery.chunked && !cut_) {
      pending_ += "0\r\n\r\n";
    }
  } else {
    pending_ += delivery.chunked ? chunk(bytes) : std::string(bytes);
  }
}

}  // namespace bmc
