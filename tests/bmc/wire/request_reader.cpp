#include "tests/bmc/wire/request_reader.h"

#include <boost/asio/buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <cstdint>
#include <utility>

namespace bmc {
namespace {

namespace http = boost::beast::http;

constexpr std::uint32_t kHeadLimit = 64 * 1024;
constexpr std::uint64_t kBodyLimit = 1024 * 1024;

std::string textOf(boost::beast::string_view view) {
  return std::string(view.data(), view.size());
}

}  // namespace

struct RequestReader::Parser {
  Parser() {
    parser.eager(true);
    parser.header_limit(kHeadLimit);
    parser.body_limit(kBodyLimit);
  }

  http::request_parser<http::string_body> parser;
};

RequestReader::RequestReader() : parser_(std::make_unique<Parser>()) {}

RequestReader::~RequestReader() = default;

RequestReader::State RequestReader::feed(std::string& buffer) {
  auto& parser = parser_->parser;
  while (!parser.is_done()) {
    boost::beast::error_code error;
    const std::size_t used = parser.put(boost::asio::buffer(buffer), error);
    buffer.erase(0, used);
    if (error == http::error::need_more) {
      return State::kIncomplete;
    }
    if (error) {
      return State::kMalformed;
    }
    if (buffer.empty() && !parser.is_done()) {
      return State::kIncomplete;
    }
  }
  return State::kComplete;
}

Request RequestReader::take() {
  auto message = parser_->parser.release();
  parser_ = std::make_unique<Parser>();

  Request request;
  request.method = textOf(message.method_string());
  request.target = textOf(message.target());
  request.keepAlive = message.keep_alive();
  for (const auto& field : message) {
    request.headers.emplace_back(textOf(field.name_string()),
                                 textOf(field.value()));
  }
  request.body = std::move(message.body());
  return request;
}

}  // namespace bmc
