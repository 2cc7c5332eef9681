#include "tests/bmc/wire/request_reader.h"

#include <gtest/gtest.h>

namespace bmc {
namespace {

using State = RequestReader::State;

TEST(RequestReader, ReadsARequestByteByByte) {
  const std::string text =
      "POST /a HTTP/1.1\r\nHost: x\r\nContent-Length: 2\r\n\r\nhi";
  RequestReader reader;
  std::string buffer;
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    buffer += text[i];
    ASSERT_EQ(reader.feed(buffer), State::kIncomplete) << i;
  }
  buffer += text.back();
  ASSERT_EQ(reader.feed(buffer), State::kComplete);
  const Request request = reader.take();
  EXPECT_EQ(request.method, "POST");
  EXPECT_EQ(request.target, "/a");
  EXPECT_EQ(headerOf(request.headers, "host"), "x");
  EXPECT_EQ(request.body, "hi");
  EXPECT_TRUE(request.keepAlive);
}

TEST(RequestReader, LeavesTheNextRequestInTheBuffer) {
  std::string buffer =
      "GET /a HTTP/1.1\r\n\r\nGET /b HTTP/1.1\r\nConnection: close\r\n\r\n";
  RequestReader reader;
  ASSERT_EQ(reader.feed(buffer), State::kComplete);
  EXPECT_EQ(reader.take().target, "/a");
  ASSERT_EQ(reader.feed(buffer), State::kComplete);
  const Request second = reader.take();
  EXPECT_EQ(second.target, "/b");
  EXPECT_FALSE(second.keepAlive);
}

TEST(RequestReader, RefusesWhatIsNoHttp) {
  std::string buffer = "\x16\x03\x01\x02\n\n";
  RequestReader reader;
  EXPECT_EQ(reader.feed(buffer), State::kMalformed);
}

}  // namespace
}  // namespace bmc
