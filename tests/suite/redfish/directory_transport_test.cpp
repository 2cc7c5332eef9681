#include "suite/redfish/recorded/directory_transport.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/support/temp_folder.h"

namespace redfish {
namespace {

namespace fs = std::filesystem;

constexpr char kRecordedRoot[] =
    R"({"@odata.id": "/redfish/v1", "@odata.type": "#ServiceRoot.v1.ServiceRoot"})";
constexpr char kSystems[] = R"({"@odata.id": "/redfish/v1/Systems"})";

http::Answer answerOf(http::Transport& transport, const std::string& target,
                      http::Method method = http::Method::kGet) {
  http::Request request;
  request.method = method;
  request.target = target;
  transport.start(std::move(request));
  return transport.next(base::Clock::now()).value();
}

// The body at a target, or what came instead.
std::string fetch(const fs::path& directory, const std::string& target) {
  const http::Answer answer =
      answerOf(*makeDirectoryTransport(directory), target);
  if (answer.failure) {
    return answer.failure->cause;
  }
  return answer.status == 200 ? answer.body : std::to_string(answer.status);
}

base::FailureKind failureAt(const fs::path& directory,
                            const std::string& target) {
  const http::Answer answer =
      answerOf(*makeDirectoryTransport(directory), target);
  EXPECT_TRUE(answer.failure);
  EXPECT_EQ(answer.status, 0);
  return answer.failure.value_or(base::Failure{}).kind;
}

class DirectoryTransportTest : public testing::Test {
 protected:
  DirectoryTransportTest() {
    recording_.write("redfish/v1/index.json", kRecordedRoot);
    recording_.write("redfish/v1/Systems/index.json", kSystems);
  }

  const fs::path& directory() const { return recording_.path(); }

  support::TempFolder recording_;
};

TEST_F(DirectoryTransportTest, ReadsTheWholeLayout) {
  EXPECT_EQ(fetch(directory(), "/redfish/v1/"), kRecordedRoot);
  EXPECT_EQ(fetch(directory(), "/redfish/v1"), kRecordedRoot);
  EXPECT_EQ(fetch(directory(), "/redfish/v1/Systems"), kSystems);
}

TEST_F(DirectoryTransportTest, ReadsTheBriefLayout) {
  EXPECT_EQ(fetch(directory() / "redfish/v1", "/redfish/v1/"), kRecordedRoot);
  EXPECT_EQ(fetch(directory() / "redfish/v1", "/redfish/v1/Systems/"),
            kSystems);
}

TEST_F(DirectoryTransportTest, BriefLayoutHoldsNothingOutsideTheService) {
  EXPECT_EQ(fetch(directory() / "redfish/v1", "/redfish"), "404");
  EXPECT_EQ(fetch(directory() / "redfish/v1", "/redfish/v1Systems"), "404");
}

TEST_F(DirectoryTransportTest, AnswerFileTellsStatusAndLocation) {
  recording_.write("redfish/v1/A/index.json", "{}");
  recording_.write("redfish/v1/A/answer.json", R"({"status": 500})");
  recording_.write("redfish/v1/B/answer.json",
                   R"({"status": 301, "location": "/redfish/v1/A"})");
  const auto transport = makeDirectoryTransport(directory());
  EXPECT_EQ(answerOf(*transport, "/redfish/v1/A").status, 500);
  EXPECT_EQ(answerOf(*transport, "/redfish/v1/A").body, "{}");
  EXPECT_EQ(answerOf(*transport, "/redfish/v1/B").status, 301);
  EXPECT_EQ(answerOf(*transport, "/redfish/v1/B").location, "/redfish/v1/A");
}

TEST_F(DirectoryTransportTest, AnswerFileTellsWhyThereWasNoAnswer) {
  recording_.write("redfish/v1/A/answer.json",
                   R"({"failure": "read-timeout", "cause": "too late"})");
  EXPECT_EQ(failureAt(directory(), "/redfish/v1/A"),
            base::FailureKind::kReadTimeout);
  EXPECT_EQ(fetch(directory(), "/redfish/v1/A"), "too late");
}

TEST_F(DirectoryTransportTest, AnswerFileThatIsNotUnderstoodIsRefused) {
  for (const char* text : {"", "[]", "{}", R"({"status": 7})",
                           R"({"status": "200"})", R"({"failure": "odd"})"}) {
    recording_.write("redfish/v1/Systems/answer.json", text);
    EXPECT_EQ(failureAt(directory(), "/redfish/v1/Systems"),
              base::FailureKind::kFileUnreadable)
        << text;
  }
}

TEST_F(DirectoryTransportTest, QueryHasItsOwnFileOrIsIgnored) {
  recording_.write("redfish/v1/Systems/index@$skip=2.json", "{}");
  EXPECT_EQ(fetch(directory(), "/redfish/v1/Systems?$skip=2"), "{}");
  EXPECT_EQ(fetch(directory(), "/redfish/v1/Systems?$skip=4"), kSystems);
  EXPECT_EQ(fetch(directory(), "/redfish/v1/Systems?$expand=."), kSystems);
  EXPECT_EQ(fetch(directory(), "/redfish/v1/Systems?../../x"), kSystems);
}

TEST_F(DirectoryTransportTest, WholeLayoutHoldsTheListOfVersions) {
  recording_.write("redfish/index.json", R"({"v1": "/redfish/v1/"})");
  EXPECT_EQ(fetch(directory(), "/redfish"), R"({"v1": "/redfish/v1/"})");
}

TEST_F(DirectoryTransportTest, DirectoryMayBeReachedThroughALink) {
  fs::create_directory_symlink("redfish", directory() / "link");
  EXPECT_EQ(fetch(directory() / "link/v1", "/redfish/v1/Systems"), kSystems);
}

TEST_F(DirectoryTransportTest, QueryIsIgnored) {
  EXPECT_EQ(fetch(directory(), "/redfish/v1/Systems?$expand=."), kSystems);
}

TEST_F(DirectoryTransportTest, EscapesInNamesAreDecoded) {
  recording_.write("redfish/v1/Fan 1/index.json", "{}");
  EXPECT_EQ(fetch(directory(), "/redfish/v1/Fan%201"), "{}");
}

TEST_F(DirectoryTransportTest, MissingFileIsNotFound) {
  EXPECT_EQ(fetch(directory(), "/redfish/v1/Chassis"), "404");
  EXPECT_EQ(fetch(directory(), "/redfish/v1/index.json"), "404");
  EXPECT_EQ(fetch(directory(), "/redfish/v1/" + std::string(900, 'x')), "404");
}

TEST_F(DirectoryTransportTest, StoredErrorIsNotFound) {
  recording_.write("redfish/v1/Chassis/index.json",
                   R"({"error": {"code": "Base.1.0.GeneralError"}})");
  const http::Answer answer =
      answerOf(*makeDirectoryTransport(directory()), "/redfish/v1/Chassis");
  EXPECT_EQ(answer.status, 404);
  EXPECT_NE(answer.body.find("GeneralError"), std::string::npos);
}

TEST_F(DirectoryTransportTest, ResourceWithAMemberErrorIsFound) {
  recording_.write("redfish/v1/Chassis/index.json",
                   R"({"@odata.id": "/redfish/v1/Chassis", "error": {}})");
  recording_.write("redfish/v1/Managers/index.json", R"({"Name": "error"})");
  EXPECT_NE(fetch(directory(), "/redfish/v1/Chassis"), "404");
  EXPECT_NE(fetch(directory(), "/redfish/v1/Managers"), "404");
}

TEST_F(DirectoryTransportTest, OtherMethodsAreNotAllowed) {
  const auto transport = makeDirectoryTransport(directory());
  EXPECT_EQ(answerOf(*transport, "/redfish/v1/", http::Method::kPost).status,
            405);
  EXPECT_EQ(answerOf(*transport, "/redfish/v1/", http::Method::kDelete).status,
            405);
}

TEST_F(DirectoryTransportTest, MissingDirectoryFails) {
  EXPECT_EQ(failureAt(directory() / "no", "/redfish/v1/"),
            base::FailureKind::kDirectoryMissing);
}

TEST_F(DirectoryTransportTest, FileInPlaceOfTheDirectoryFails) {
  EXPECT_EQ(failureAt(directory() / "redfish/v1/index.json", "/redfish/v1/"),
            base::FailureKind::kDirectoryMissing);
}

TEST_F(DirectoryTransportTest, DirectoryWithoutServiceRootFails) {
  EXPECT_EQ(failureAt(directory() / "redfish", "/redfish/v1/"),
            base::FailureKind::kFileUnreadable);
  EXPECT_EQ(failureAt(directory() / "redfish/v1/Systems", "/redfish/v1/"),
            base::FailureKind::kFileUnreadable);
}

TEST_F(DirectoryTransportTest, FailureNamesDirectoryAndResource) {
  const auto transport = makeDirectoryTransport(directory() / "no");
  const http::Answer answer = answerOf(*transport, "/redfish/v1/");
  EXPECT_EQ(base::describe(answer.failure.value()),
            "file:" + (directory() / "no").string() +
                ": /redfish/v1/: there is no such directory; check the path");
}

TEST_F(DirectoryTransportTest, DotSegmentsDoNotLeadOutside) {
  recording_.write("secret/index.json", "{}");
  const fs::path inner = directory() / "redfish/v1";
  EXPECT_EQ(failureAt(inner, "/redfish/v1/../../secret"),
            base::FailureKind::kRefusedLink);
  EXPECT_EQ(failureAt(inner, "/redfish/v1/%2e%2e/%2e%2e/secret"),
            base::FailureKind::kRefusedLink);
  EXPECT_EQ(failureAt(inner, "/redfish/v1/Systems/..%2f..%2f..%2fsecret"),
            base::FailureKind::kRefusedLink);
}

TEST_F(DirectoryTransportTest, SymbolicLinksDoNotLeadOutside) {
  recording_.write("secret/index.json", "{}");
  const fs::path inner = directory() / "redfish/v1";
  fs::create_directory_symlink("../../secret", inner / "Chassis");
  fs::create_directory(inner / "Managers");
  fs::create_symlink("../../../secret/index.json",
                     inner / "Managers/index.json");
  EXPECT_EQ(failureAt(inner, "/redfish/v1/Chassis"),
            base::FailureKind::kRefusedLink);
  EXPECT_EQ(failureAt(inner, "/redfish/v1/Managers"),
            base::FailureKind::kRefusedLink);
}

TEST_F(DirectoryTransportTest, NeighbourWithTheSamePrefixIsOutside) {
  recording_.write("redfish/v1x/index.json", "{}");
  EXPECT_EQ(failureAt(directory() / "redfish/v1", "/redfish/v1/../v1x"),
            base::FailureKind::kRefusedLink);
}

TEST_F(DirectoryTransportTest, SymbolicLinksInsideAreFollowed) {
  fs::create_directory_symlink("Systems", directory() / "redfish/v1/Chassis");
  EXPECT_EQ(fetch(directory(), "/redfish/v1/Chassis"), kSystems);
}

TEST_F(DirectoryTransportTest, LoopOfSymbolicLinksFails) {
  fs::create_symlink("Loop", directory() / "redfish/v1/Loop");
  EXPECT_EQ(failureAt(directory(), "/redfish/v1/Loop"),
            base::FailureKind::kFileUnreadable);
}

TEST_F(DirectoryTransportTest, PipeAndDirectoryAreNoResources) {
  fs::create_directories(directory() / "redfish/v1/Pipe");
  const fs::path pipe = directory() / "redfish/v1/Pipe/index.json";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  fs::create_directories(directory() / "redfish/v1/Folder/index.json");
  EXPECT_EQ(failureAt(directory(), "/redfish/v1/Pipe"),
            base::FailureKind::kFileUnreadable);
  EXPECT_EQ(failureAt(directory(), "/redfish/v1/Folder"),
            base::FailureKind::kFileUnreadable);
}

TEST_F(DirectoryTransportTest, LargestFileIsRead) {
  recording_.write("redfish/v1/Large/index.json", "");
  const fs::path file = directory() / "redfish/v1/Large/index.json";
  fs::resize_file(file, http::kMaxBodyBytes);
  EXPECT_EQ(fetch(directory(), "/redfish/v1/Large").size(),
            http::kMaxBodyBytes);
  fs::resize_file(file, http::kMaxBodyBytes + 1);
  EXPECT_EQ(failureAt(directory(), "/redfish/v1/Large"),
            base::FailureKind::kBadContent);
}

TEST_F(DirectoryTransportTest, IsNoLiveService) {
  const auto transport = makeDirectoryTransport(directory());
  EXPECT_FALSE(transport->live());
  EXPECT_EQ(transport->address(), "file:" + directory().string());
}

}  // namespace
}  // namespace redfish
