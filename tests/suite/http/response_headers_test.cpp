#include "suite/http/response_headers.h"

#include <gtest/gtest.h>

#include <initializer_list>

#include "suite/http/transport.h"

namespace http {
namespace {

ResponseHeaders headersOf(std::initializer_list<const char*> lines) {
  ResponseHeaders headers;
  for (const char* line : lines) {
    EXPECT_TRUE(headers.add(line + std::string("\r\n")));
  }
  return headers;
}

TEST(ResponseHeaders, KeepsWhatMatters) {
  const ResponseHeaders headers =
      headersOf({"HTTP/1.1 201 Created", "Location: /redfish/v1/S/1",
                 "X-Auth-Token: abc", "Retry-After: 5", "Server: x", ""});
  EXPECT_EQ(headers.location(), "/redfish/v1/S/1");
  EXPECT_EQ(headers.authToken().text(), "abc");
  EXPECT_EQ(headers.retryAfter(), "5");
}

TEST(ResponseHeaders, NamesIgnoreCaseAndValuesAreTrimmed) {
  const ResponseHeaders headers =
      headersOf({"HTTP/2 201", "x-AUTH-token:\t abc \t", "location:/a"});
  EXPECT_EQ(headers.authToken().text(), "abc");
  EXPECT_EQ(headers.location(), "/a");
}

TEST(ResponseHeaders, NamesAreComparedWhole) {
  const ResponseHeaders headers =
      headersOf({"HTTP/1.1 200 OK", "Content-Location: /a", "Locations: /b"});
  EXPECT_EQ(headers.location(), "");
}

TEST(ResponseHeaders, LastOneWins) {
  EXPECT_EQ(
      headersOf({"HTTP/1.1 200 OK", "Location: /a", "Location: /b"}).location(),
      "/b");
}

TEST(ResponseHeaders, InterimAnswersDoNotCount) {
  const ResponseHeaders headers =
      headersOf({"HTTP/1.1 103 Early Hints", "Location: /early", "",
                 "HTTP/1.1 200 OK", "Retry-After: 1", ""});
  EXPECT_EQ(headers.location(), "");
  EXPECT_EQ(headers.retryAfter(), "1");
}

TEST(ResponseHeaders, TrailersDoNotCount) {
  EXPECT_EQ(headersOf({"HTTP/1.1 200 OK", "", "Location: /late"}).location(),
            "");
}

TEST(ResponseHeaders, TokenThatCannotBeSentBackIsNone) {
  EXPECT_EQ(headersOf({"HTTP/1.1 201 Created", "X-Auth-Token: a b"})
                .authToken()
                .text(),
            "");
  EXPECT_EQ(headersOf({"HTTP/1.1 201 Created", "X-Auth-Token: a\x01"})
                .authToken()
                .text(),
            "");
}

TEST(ResponseHeaders, LinesWithoutColonAreSkipped) {
  EXPECT_EQ(
      headersOf({"HTTP/1.1 200 OK", "Location", "Location: /a"}).location(),
      "/a");
}

TEST(ResponseHeaders, LimitCountsAllLines) {
  ResponseHeaders headers;
  EXPECT_FALSE(headers.begun());
  EXPECT_TRUE(headers.add("HTTP/1.1 100 Continue\r\n"));
  EXPECT_TRUE(headers.begun());
  EXPECT_TRUE(headers.add(std::string(kMaxHeaderBytes - 40, 'a')));
  EXPECT_TRUE(headers.add("HTTP/1.1 200 OK\r\n"));
  EXPECT_FALSE(headers.add("HTTP/1.1 200 OK\r\n"));
  EXPECT_TRUE(headers.tooLarge());
}

TEST(ResponseHeaders, DateToRetryAfterIsMeasuredFromTheAnswers) {
  ResponseHeaders headers;
  headers.add("HTTP/1.1 503 Busy\r\n");
  headers.add("Retry-After: Thu, 01 Jan 1970 00:02:05 GMT\r\n");
  EXPECT_EQ(headers.retryAfter(), "Thu, 01 Jan 1970 00:02:05 GMT");
  headers.add("date: Thu, 01 Jan 1970 00:02:00 GMT\r\n");
  EXPECT_EQ(headers.retryAfter(), "5");
  headers.add("Date: Thu, 01 Jan 1970 00:03:00 GMT\r\n");
  EXPECT_EQ(headers.retryAfter(), "0");
}

TEST(ResponseHeaders, SecondsToRetryAfterNeedNoDate) {
  ResponseHeaders headers;
  headers.add("HTTP/1.1 503 Busy\r\n");
  headers.add("Date: Thu, 01 Jan 1970 00:02:00 GMT\r\n");
  headers.add("Retry-After: 7\r\n");
  EXPECT_EQ(headers.retryAfter(), "7");
}

TEST(ResponseHeaders, ClearForgetsEverything) {
  ResponseHeaders headers = headersOf({"HTTP/1.1 200 OK", "Location: /a",
                                       "X-Auth-Token: abc", "Retry-After: 1"});
  headers.clear();
  EXPECT_FALSE(headers.begun());
  EXPECT_EQ(
      headers.location() + headers.authToken().text() + headers.retryAfter(),
      "");
}

TEST(ResponseHeaders, OneGzipCodingIsDecodable) {
  EXPECT_TRUE(headersOf({"HTTP/1.1 200 OK"}).decodable());
  EXPECT_TRUE(headersOf({"HTTP/1.1 200 OK", "Content-Encoding: GZip, identity"})
                  .decodable());
}

TEST(ResponseHeaders, OtherCodingsAreNot) {
  for (const char* list : {"gzip, gzip", "deflate", "gzip,br", "br, gzip"}) {
    const std::string line = std::string("content-encoding: ") + list;
    EXPECT_FALSE(headersOf({"HTTP/1.1 200 OK", line.c_str()}).decodable())
        << list;
  }
}

TEST(ResponseHeaders, CodingsOfAllHeadersCount) {
  EXPECT_FALSE(headersOf({"HTTP/1.1 200 OK", "Content-Encoding: gzip",
                          "Content-Encoding: gzip"})
                   .decodable());
  EXPECT_FALSE(headersOf({"HTTP/1.1 103 Early Hints", "Content-Encoding: gzip",
                          "", "HTTP/1.1 200 OK", "Content-Encoding: gzip"})
                   .decodable());
}

}  // namespace
}  // namespace http
