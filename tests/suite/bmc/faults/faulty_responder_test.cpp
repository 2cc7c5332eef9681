#include "tests/bmc/faults/faulty_responder.h"

#include <gtest/gtest.h>

#include "tests/bmc/faults/fault_file.h"
#include "tests/bmc/wire/error_body.h"
#include "tests/suite/bmc/recorded_tree.h"

namespace bmc {
namespace {

// Answers every request with its own target and counts them.
class Echo : public Responder {
 public:
  Reply answer(const Request& request) override {
    ++asked;
    return jsonReply(200, R"({"target":")" + request.target + R"("})");
  }

  int asked = 0;
};

class FaultyResponderTest : public testing::Test {
 protected:
  void rules(const std::string& text) {
    const RecordedTree files(
        Files{{"faults.json", R"({"rules":)" + text + "}"}, {"x", ""}});
    std::string error;
    const auto plan = readFaultFile(files.folder() + "/faults.json", error);
    ASSERT_TRUE(plan) << error;
    faulty_.emplace(echo_, plan->rules);
    faulty_->setMarks({{"http", "127.0.0.1:1"}});
  }

  Reply ask(std::string target, const char* method = "GET",
            std::uint64_t ordinal = 1) {
    Request request;
    request.method = method;
    request.target = std::move(target);
    request.ordinal = ordinal;
    return faulty_->answer(request);
  }

  static std::string bodyOf(const Reply& reply) {
    return reply.body ? std::string(reply.body->next(4096)) : "";
  }

  Echo echo_;
  std::optional<FaultyResponder> faulty_;
};

TEST_F(FaultyResponderTest, WithoutRulesTheServiceAnswers) {
  rules("[]");
  EXPECT_EQ(bodyOf(ask("/a")), R"({"target":"/a"})");
}

TEST_F(FaultyResponderTest, AnswerReplacesTheService) {
  rules(R"([{"match": {"path": "/a"}, "answer": {"status": 500,
             "body": "oops"}}])");
  const Reply reply = ask("/a/");
  EXPECT_EQ(reply.status, 500);
  EXPECT_EQ(bodyOf(reply), "oops");
  EXPECT_EQ(echo_.asked, 0);
  EXPECT_EQ(ask("/b").status, 200);
}

TEST_F(FaultyResponderTest, ChangeAsksTheServiceFirst) {
  rules(R"([{"change": {"status": 202, "headers": {"OData-Version": null,
             "X": "1"}, "set": {"/more": 1}}}])");
  const Reply reply = ask("/a");
  EXPECT_EQ(reply.status, 202);
  EXPECT_EQ(headerOf(reply.headers, "OData-Version"), "");
  EXPECT_EQ(headerOf(reply.headers, "X"), "1");
  EXPECT_EQ(bodyOf(reply), R"({"target":"/a","more":1})");
  EXPECT_EQ(echo_.asked, 1);
}

TEST_F(FaultyResponderTest, NthCountsTheRequestsThatFit) {
  rules(
      R"([{"match": {"path": "/a", "nth": "2"}, "answer": {"status": 503}}])");
  EXPECT_EQ(ask("/a").status, 200);
  EXPECT_EQ(ask("/b").status, 200);
  EXPECT_EQ(ask("/a").status, 503);
  EXPECT_EQ(ask("/a").status, 200);
}

TEST_F(FaultyResponderTest, FirstRuleThatFitsHolds) {
  rules(R"([{"match": {"nth": "1"}, "answer": {"status": 500}},
            {"answer": {"status": 404}}])");
  EXPECT_EQ(ask("/a").status, 500);
  EXPECT_EQ(ask("/a").status, 404);
}

TEST_F(FaultyResponderTest, MethodTargetAndOrdinalMustFit) {
  rules(R"([{"match": {"method": "POST", "target": "/a?x=*", "ordinal": "2-"},
             "answer": {"status": 500}}])");
  EXPECT_EQ(ask("/a?x=1", "POST", 2).status, 500);
  EXPECT_EQ(ask("/a?x=1", "GET", 2).status, 200);
  EXPECT_EQ(ask("/a", "POST", 2).status, 200);
  EXPECT_EQ(ask("/a?x=1", "POST", 1).status, 200);
}

TEST_F(FaultyResponderTest, ErrorMakesAnErrorBody) {
  rules(R"([{"answer": {"status": 403, "error": "PasswordChangeRequired"}}])");
  const Reply reply = ask("/a");
  EXPECT_EQ(reply.status, 403);
  EXPECT_NE(bodyOf(reply).find("Base.1.18.PasswordChangeRequired"),
            std::string::npos);
}

TEST_F(FaultyResponderTest, MarksAreReplaced) {
  rules(R"([{"answer": {"headers": {"Location": "http://${http}${target}"},
             "body": "page ${nth}"}}])");
  EXPECT_EQ(bodyOf(ask("/a")), "page 1");
  const Reply second = ask("/b");
  EXPECT_EQ(bodyOf(second), "page 2");
  EXPECT_EQ(headerOf(second.headers, "Location"), "http://127.0.0.1:1/b");
}

TEST_F(FaultyResponderTest, DeliveryIsHandedOn) {
  rules(R"([{"delivery": {"delayMs": 7, "silent": true, "ending": "reset"}}])");
  const Reply reply = ask("/a");
  EXPECT_EQ(reply.delivery.delay.count(), 7);
  EXPECT_TRUE(reply.delivery.silent);
  EXPECT_EQ(reply.delivery.ending, Ending::kReset);
}

}  // namespace
}  // namespace bmc
