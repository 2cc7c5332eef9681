#include "tests/bmc/service/compressing.h"

#include <gtest/gtest.h>

#include "tests/bmc/wire/generated_body.h"
#include "tests/bmc/wire/gzip.h"

namespace bmc {
namespace {

class Fixed : public Responder {
 public:
  explicit Fixed(Headers headers = {}) : headers_(std::move(headers)) {}

  Reply answer(const Request&) override {
    Reply reply;
    reply.headers = headers_;
    reply.body = std::make_unique<TextBody>("text");
    return reply;
  }

 private:
  Headers headers_;
};

std::string codingOf(Responder& inner, const char* accepted) {
  Request request;
  if (accepted != nullptr) {
    request.headers = {{"accept-encoding", accepted}};
  }
  const Reply reply = Compressing(inner).answer(request);
  return std::string(headerOf(reply.headers, "Content-Encoding"));
}

TEST(Compressing, OnlyForThoseWhoAccept) {
  Fixed inner;
  EXPECT_EQ(codingOf(inner, nullptr), "");
  EXPECT_EQ(codingOf(inner, "identity"), "");
  EXPECT_EQ(codingOf(inner, "deflate, gzip"), "gzip");
}

TEST(Compressing, LeavesDeclaredCodingsAndLengthsAlone) {
  Fixed coded(Headers{{"Content-Encoding", "br"}});
  EXPECT_EQ(codingOf(coded, "gzip"), "br");
  Fixed sized(Headers{{"Content-Length", "9"}});
  EXPECT_EQ(codingOf(sized, "gzip"), "");
}

TEST(GzipBody, StaysSmallWhateverItStandsFor) {
  const std::string block(1024 * 1024, ' ');
  GzipBody body(
      std::make_unique<GeneratedBody>(std::vector<BodyPart>{{block, 32}}));
  std::string packed;
  for (std::string_view bytes; !(bytes = body.next(4096)).empty();) {
    packed += bytes;
  }
  EXPECT_EQ(packed.substr(0, 2), "\x1f\x8b");
  EXPECT_LT(packed.size(), 64U * 1024U);
}

}  // namespace
}  // namespace bmc
