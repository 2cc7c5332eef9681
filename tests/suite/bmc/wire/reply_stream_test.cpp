#include "tests/bmc/wire/reply_stream.h"

#include <gtest/gtest.h>

namespace bmc {
namespace {

Reply withBody(std::string text) {
  Reply reply;
  reply.body = std::make_unique<TextBody>(std::move(text));
  return reply;
}

std::string all(ReplyStream& stream, std::size_t limit = std::string::npos) {
  std::string text;
  for (std::string_view bytes; !(bytes = stream.next(limit)).empty();) {
    text += bytes;
  }
  return text;
}

TEST(ReplyStream, SendsHeadAndBody) {
  Reply reply = withBody("hello");
  reply.headers = {{"X", "1"}};
  ReplyStream stream(std::move(reply), false, true);
  EXPECT_EQ(all(stream),
            "HTTP/1.1 200 OK\r\nX: 1\r\nContent-Length: 5\r\n"
            "Connection: keep-alive\r\n\r\nhello");
  EXPECT_FALSE(stream.cut());
}

TEST(ReplyStream, StepsAreNoLongerThanAsked) {
  ReplyStream whole(withBody("hello"), false, true);
  ReplyStream stepped(withBody("hello"), false, true);
  EXPECT_EQ(stepped.next(1), "H");
  EXPECT_EQ("H" + all(stepped, 1), all(whole));
}

TEST(ReplyStream, HeadOnlyHasTheLengthAndNoBody) {
  ReplyStream stream(withBody("hello"), true, false);
  EXPECT_EQ(all(stream),
            "HTTP/1.1 200 OK\r\nContent-Length: 5\r\nConnection: "
            "close\r\n\r\n");
}

TEST(ReplyStream, NoContentHasNoLength) {
  Reply reply;
  reply.status = 204;
  ReplyStream stream(std::move(reply), false, true);
  EXPECT_EQ(all(stream),
            "HTTP/1.1 204 No Content\r\nConnection: keep-alive\r\n\r\n");
}

TEST(ReplyStream, CutLeavesTheLengthAsPromised) {
  Reply reply = withBody("hello");
  reply.delivery.cutAfter = 2;
  ReplyStream stream(std::move(reply), false, true);
  const std::string text = all(stream);
  EXPECT_NE(text.find("Content-Length: 5\r\n"), std::string::npos);
  EXPECT_EQ(text.substr(text.find("\r\n\r\n") + 4), "he");
  EXPECT_TRUE(stream.cut());
}

TEST(ReplyStream, ChunksAreFramed) {
  Reply reply = withBody("hello");
  reply.delivery.chunked = true;
  ReplyStream stream(std::move(reply), false, true);
  const std::string text = all(stream);
  EXPECT_EQ(text.find("Content-Length"), std::string::npos);
  EXPECT_EQ(text.substr(text.find("\r\n\r\n") + 4), "5\r\nhello\r\n0\r\n\r\n");
}

TEST(ReplyStream, GivenLengthIsNotCorrected) {
  Reply reply = withBody("hello");
  reply.headers = {{"content-length", "9"}};
  ReplyStream stream(std::move(reply), false, true);
  EXPECT_EQ(all(stream).find("Content-Length: 5"), std::string::npos);
}

}  // namespace
}  // namespace bmc
