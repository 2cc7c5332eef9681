// What a fetcher repeats, and how often.
#include "suite/redfish/session/fetcher.h"

#include <gtest/gtest.h>

#include "tests/suite/redfish/script_transport.h"

namespace redfish {
namespace {

constexpr const char* kTarget = "/redfish/v1/Systems";

class FetcherTest : public testing::Test {
 protected:
  // The final answer to one read.
  http::Answer read() {
    Fetcher fetcher(*transport_, 4);
    Fetch fetch;
    fetch.target = kTarget;
    fetcher.get(fetch);
    auto fetched = fetcher.next(base::Clock::time_point::max());
    EXPECT_TRUE(fetched.has_value());
    return fetched ? std::move(fetched->answer) : http::Answer();
  }
  Script& answer(http::Answer answer) {
    return script_->on(std::string("GET ") + kTarget, std::move(answer));
  }
  std::size_t asked() const { return script_->requests.size(); }

  std::shared_ptr<Script> script_ = std::make_shared<Script>();
  std::unique_ptr<http::Transport> transport_ = makeScriptTransport(script_);
};

http::Answer busy(int status) {
  http::Answer answer = answerOf(status);
  answer.retryAfter = "1";
  return answer;
}

TEST_F(FetcherTest, OverloadIsRepeatedThreeTimes) {
  answer(busy(429)).on(std::string("GET ") + kTarget, busy(503));
  EXPECT_EQ(read().status, 503);
  EXPECT_EQ(asked(), 4U);
}

TEST_F(FetcherTest, ServerErrorsAreRepeatedOnce) {
  for (const int status : {500, 502, 504}) {
    *script_ = Script();
    answer(answerOf(status)).on(std::string("GET ") + kTarget, 200);
    EXPECT_EQ(read().status, 200) << status;
    EXPECT_EQ(asked(), 2U) << status;
  }
}

TEST_F(FetcherTest, WhatIsNotImplementedIsNotRepeated) {
  answer(answerOf(501)).on(std::string("GET ") + kTarget, 200);
  EXPECT_EQ(read().status, 501);
  EXPECT_EQ(asked(), 1U);
}

TEST_F(FetcherTest, TimeThatIsUpIsHeededThoughAnswersAreThere) {
  answer(answerOf(200));
  Fetcher fetcher(*transport_, 4);
  fetcher.get({kTarget});
  EXPECT_FALSE(fetcher.next(base::Clock::time_point::min()));
  EXPECT_TRUE(fetcher.next(base::Clock::time_point::max()));
}

TEST_F(FetcherTest, ConnectionLostBeforeAnAnswerIsRepeatedOnceOnAFreshOne) {
  http::Answer lost = failureOf(base::FailureKind::kUnreachable);
  lost.lostBeforeAnswer = true;
  answer(lost);
  EXPECT_TRUE(read().failure.has_value());
  EXPECT_EQ(asked(), 2U);
  EXPECT_EQ(script_->fresh, 1U);
}

TEST_F(FetcherTest, ReusedConnectionThatIsResetIsRepeatedOnceOnAFreshOne) {
  http::Answer reset = failureOf(base::FailureKind::kUnreachable);
  reset.reusedConnection = true;
  answer(reset).on(std::string("GET ") + kTarget, 200);
  EXPECT_EQ(read().status, 200);
  EXPECT_EQ(asked(), 2U);
  EXPECT_EQ(script_->fresh, 1U);
}

TEST_F(FetcherTest, ConnectionThatIsRefusedIsNotRepeated) {
  answer(failureOf(base::FailureKind::kUnreachable));
  EXPECT_TRUE(read().failure.has_value());
  EXPECT_EQ(asked(), 1U);
}

TEST_F(FetcherTest, LostLoginIsNotRepeated) {
  http::Answer lost = failureOf(base::FailureKind::kUnreachable);
  lost.lostBeforeAnswer = true;
  script_->on(std::string("POST ") + kTarget, lost);
  Fetcher fetcher(*transport_, 4);
  http::Request request;
  request.method = http::Method::kPost;
  request.target = kTarget;
  fetcher.send(std::move(request));
  EXPECT_TRUE(fetcher.next(base::Clock::time_point::max())->answer.failure);
  EXPECT_EQ(asked(), 1U);
}

}  // namespace
}  // namespace redfish
