#include "tests/bmc/ipmi/ipmi.h"

#include <gtest/gtest.h>

#include <numeric>

namespace bmc {
namespace {

using namespace std::string_literals;

const std::string kAsk20 =
    "\x06\x00\xff\x07\x00\x00\x00\x00\x00\x00\x00\x00\x00\x09"
    "\x20\x18\xc8\x81\x00\x38\x8e\x04\xb5"s;
const std::string kAsk15 =
    "\x06\x00\xff\x07\x00\x00\x00\x00\x00\x00\x00\x00\x00\x09"
    "\x20\x18\xc8\x81\x00\x38\x0e\x04\x35"s;
const std::string kPing = "\x06\x00\xff\x06\x00\x00\x11\xbe\x80\x07\x00\x00"s;

constexpr std::size_t kCompletionCode = 20;
constexpr std::size_t kAuthenticationTypes = 22;
constexpr std::size_t kExtended = 24;

std::string ask(const std::string& datagram, IpmiAnswer behaviour) {
  IpmiSettings settings;
  settings.channel = behaviour;
  return answerIpmi(datagram, settings).value_or("");
}

bool checksumsHold(const std::string& answer) {
  const auto sum = [&answer](std::size_t from, std::size_t to) {
    return std::accumulate(answer.begin() + static_cast<std::ptrdiff_t>(from),
                           answer.begin() + static_cast<std::ptrdiff_t>(to),
                           0) &
           0xff;
  };
  return sum(14, 17) == 0 && sum(17, answer.size()) == 0;
}

TEST(AnswerIpmi, Version20SetsBothBits) {
  const std::string answer = ask(kAsk20, IpmiAnswer::kVersion20);
  ASSERT_EQ(answer.size(), 30U);
  EXPECT_EQ(answer.substr(0, 4), "\x06\x00\xff\x07"s);
  EXPECT_EQ(answer[13], 16);  // Length of the message.
  EXPECT_EQ(answer[15], 0x1c);
  EXPECT_EQ(answer[19], 0x38);
  EXPECT_EQ(answer[kCompletionCode], 0);
  EXPECT_NE(answer[kAuthenticationTypes] & 0x80, 0);
  EXPECT_NE(answer[kExtended] & 0x02, 0);
  EXPECT_TRUE(checksumsHold(answer));
}

TEST(AnswerIpmi, Version15SetsNeither) {
  const std::string answer = ask(kAsk20, IpmiAnswer::kVersion15);
  ASSERT_EQ(answer.size(), 30U);
  EXPECT_EQ(answer[kAuthenticationTypes] & 0x80, 0);
  EXPECT_EQ(answer[kExtended], 0);
  EXPECT_TRUE(checksumsHold(answer));
}

TEST(AnswerIpmi, SomeRejectTheBitAlone) {
  const std::string rejected = ask(kAsk20, IpmiAnswer::kRejects20);
  EXPECT_EQ(rejected[kCompletionCode], '\xcc');
  EXPECT_TRUE(checksumsHold(rejected));
  EXPECT_EQ(ask(kAsk15, IpmiAnswer::kRejects20)[kCompletionCode], 0);
}

TEST(AnswerIpmi, BadChecksumIsBad) {
  EXPECT_FALSE(checksumsHold(ask(kAsk20, IpmiAnswer::kBadChecksum)));
}

TEST(AnswerIpmi, SilenceSaysNothing) {
  EXPECT_EQ(ask(kAsk20, IpmiAnswer::kSilent), "");
}

TEST(AnswerIpmi, OtherDatagramsSayNothing) {
  EXPECT_EQ(ask("", IpmiAnswer::kVersion20), "");
  EXPECT_EQ(ask(kAsk20.substr(0, 20), IpmiAnswer::kVersion20), "");
  EXPECT_EQ(ask(kPing, IpmiAnswer::kVersion20), "");
}

TEST(AnswerIpmi, PongRepeatsTheTag) {
  IpmiSettings settings;
  settings.pong = true;
  const std::string pong = answerIpmi(kPing, settings).value_or("");
  ASSERT_EQ(pong.size(), 28U);
  EXPECT_EQ(pong[8], 0x40);
  EXPECT_EQ(pong[9], 0x07);
  EXPECT_NE(pong[20] & 0x80, 0);
  settings.pongSaysIpmi = false;
  EXPECT_EQ(answerIpmi(kPing, settings)->at(20) & 0x80, 0);
}

}  // namespace
}  // namespace bmc
