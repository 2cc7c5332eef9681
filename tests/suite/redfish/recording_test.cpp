#include "suite/redfish/recording/recording.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <memory>

#include "suite/redfish/recording/recording_transport.h"
#include "tests/suite/redfish/script_transport.h"

namespace redfish {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;

http::Answer answerWith(int status, std::string body) {
  http::Answer answer;
  answer.status = status;
  answer.body = std::move(body);
  return answer;
}

std::map<std::string, std::string> filesOf(const Recording& recording,
                                           masking::Masker* masker = nullptr) {
  std::map<std::string, std::string> files;
  recording.forEachFile(masker, [&files](const RecordedFile& file) {
    EXPECT_TRUE(files.emplace(file.path, file.bytes).second) << file.path;
  });
  return files;
}

TEST(Recording, StoresBodiesByPath) {
  Recording recording;
  recording.keep("/redfish/v1/", answerWith(200, R"({"a": 1})"));
  recording.keep("/redfish/v1/A%20B", answerWith(200, "{}"));
  EXPECT_THAT(filesOf(recording),
              ElementsAre(Pair("redfish/v1/A B/index.json", "{}"),
                          Pair("redfish/v1/index.json", R"({"a": 1})")));
}

TEST(Recording, LastAnswerCounts) {
  Recording recording;
  recording.keep("/redfish/v1/A?$expand=.", answerWith(501, "no"));
  recording.keep("/redfish/v1/A", answerWith(200, "{}"));
  EXPECT_THAT(filesOf(recording),
              ElementsAre(Pair("redfish/v1/A/index.json", "{}")));
}

TEST(Recording, TellsStatusesRedirectsAndFailuresBesideTheBody) {
  Recording recording;
  recording.keep("/redfish/v1/A", answerWith(500, "oops"));
  http::Answer moved = answerWith(301, "");
  moved.location = "/redfish/v1/C";
  recording.keep("/redfish/v1/B", moved);
  http::Answer late;
  late.failure = base::makeFailure(base::FailureKind::kReadTimeout, "late");
  recording.keep("/redfish/v1/D", late);
  recording.keep("/redfish/v1/E", answerWith(404, R"({"error": {}})"));
  const auto files = filesOf(recording);
  EXPECT_EQ(files.at("redfish/v1/A/answer.json"), "{\"status\":500}\n");
  EXPECT_EQ(files.at("redfish/v1/B/answer.json"),
            "{\"status\":301,\"location\":\"/redfish/v1/C\"}\n");
  EXPECT_EQ(files.count("redfish/v1/D/index.json"), 0U);
  EXPECT_THAT(files.at("redfish/v1/D/answer.json"), HasSubstr("read-timeout"));
  EXPECT_EQ(files.count("redfish/v1/E/answer.json"), 0U);
}

TEST(Recording, StoresPagesUnderTheirQueries) {
  Recording recording;
  recording.keep("/redfish/v1/A?$skip=2&$expand=.", answerWith(200, "{}"));
  EXPECT_THAT(filesOf(recording),
              ElementsAre(Pair("redfish/v1/A/index@$skip=2.json", "{}")));
}

TEST(Recording, StoresResourcesInsideOfOthersOnTheirOwnToo) {
  Recording recording;
  const std::string expanded =
      R"({"@odata.id": "/redfish/v1/A", "@odata.type": "#A.A", "Members": [)"
      R"({"@odata.id": "/redfish/v1/A/1", "@odata.type": "#B.B", "Id": "1"},)"
      R"({"@odata.id": "/redfish/v1/A/2", "@odata.type": "#B.B", "Id": "2"}]})";
  recording.keep("/redfish/v1/A", answerWith(200, expanded));
  recording.keep("/redfish/v1/A/2", answerWith(200, R"({"Id": "own"})"));
  const auto files = filesOf(recording);
  EXPECT_EQ(files.at("redfish/v1/A/index.json"), expanded);
  EXPECT_THAT(files.at("redfish/v1/A/1/index.json"), HasSubstr("\"Id\":\"1\""));
  EXPECT_EQ(files.at("redfish/v1/A/2/index.json"), R"({"Id": "own"})");
}

TEST(Recording, MasksPathsAsItMasksTheLinksToThem) {
  Recording recording;
  recording.keep(
      "/redfish/v1/Systems",
      answerWith(200, R"({"Link": "/redfish/v1/Systems/QX4711ab"})"));
  recording.keep("/redfish/v1/Systems/QX4711ab",
                 answerWith(200, R"({"SerialNumber": "QX4711ab"})"));
  masking::Masker masker;
  recording.note(masker);
  const auto files = filesOf(recording, &masker);
  const std::string made = masker.value("QX4711ab");
  EXPECT_EQ(files.at("redfish/v1/Systems/index.json"),
            "{\"Link\": \"/redfish/v1/Systems/" + made + "\"}");
  EXPECT_EQ(files.count("redfish/v1/Systems/" + made + "/index.json"), 1U);
}

TEST(Recording, NeverHoldsWhatProvesALogin) {
  Recording recording;
  recording.noteSecret(base::Secret(std::string("Pass\"word")));
  recording.keep("/redfish/v1/A",
                 answerWith(200, R"({"Name": "it was Pass\"word"})"));
  recording.keep("/redfish/v1/B", answerWith(500, "it was Pass\"word"));
  const auto files = filesOf(recording);
  EXPECT_EQ(files.at("redfish/v1/A/index.json"), R"({"Name": "it was ***"})");
  EXPECT_EQ(files.at("redfish/v1/B/index.json"), "it was ***");
}

TEST(Recording, NeverHoldsTheLoginThatBasicSends) {
  auto script = std::make_shared<Script>();
  // "ada:Wal-kure" in base 64.
  script->on("GET /redfish/v1/A", 200,
             R"({"Name": "Basic YWRhOldhbC1rdXJl refused"})");
  Recording recording;
  const auto transport =
      makeRecordingTransport(makeScriptTransport(script), recording);
  http::Request request;
  request.target = "/redfish/v1/A";
  request.basicUser = "ada";
  request.basicPassword = base::Secret(std::string("Wal-kure"));
  transport->start(std::move(request));
  transport->next(base::Clock::now() + std::chrono::seconds(1));
  EXPECT_EQ(filesOf(recording).at("redfish/v1/A/index.json"),
            R"({"Name": "Basic *** refused"})");
}

TEST(Recording, HoldsNoSessions) {
  Recording recording;
  recording.keep("/redfish/v1/SessionService/Sessions/7", answerWith(200, ""));
  EXPECT_TRUE(recording.empty());
}

TEST(Recording, TellsWhatIsMissing) {
  Recording recording;
  EXPECT_EQ(recording.missing(), "");
  recording.countUnderWay(1);
  EXPECT_EQ(recording.missing(), "1 requests were not answered");
  recording.keep("/redfish/v1/A",
                 answerWith(200, std::string(Recording::kMostBytes + 1, ' ')));
  EXPECT_EQ(recording.missing(), "1 answers could not be kept");
}

}  // namespace
}  // namespace redfish
