// Whatever a controller does, there is one line for it that obeys the schema,
// and it says "complete" only if nothing went wrong.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>

#include "suite/report/json.h"
#include "tests/bmc/control/controller.h"
#include "tests/export/program/exported.h"
#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace exporting {
namespace {

namespace fs = std::filesystem;

// The fault files of the cases that stand for one controller each.
std::vector<std::string> faultFiles() {
  std::vector<std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(FAULT_CASES)) {
    if (entry.path().filename() == "faults.json" &&
        support::fileText(entry.path()).find('@') == std::string::npos) {
      files.push_back(entry.path().string());
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

class FaultyController : public testing::TestWithParam<std::string> {};

TEST_P(FaultyController, IsALineThatObeysTheSchema) {
  const bmc::Controller controller(
      {"--tree", SAMPLES "/rack-server", "--faults", GetParam()});
  ASSERT_TRUE(controller.running());
  const RunEnd end = runBrivel({"--bmc", "http://admin@" + controller.http(),
                                "--timeout", "1", "--deadline", "2", "export"});
  const auto lines = linesOf(end.output);
  ASSERT_FALSE(lines.empty()) << end.errors;
  bool complete = true;
  for (const std::string& line : lines) {
    const auto server = report::fromJson(line);
    ASSERT_TRUE(server) << server.error().cause;
    complete = complete && server->read.status == report::ReadStatus::kComplete;
    EXPECT_EQ(server->read.status == report::ReadStatus::kComplete,
              server->read.failures.empty());
    if (!server->health.events) {
      EXPECT_EQ(server->health.status, report::Health::kUnknown);
    }
  }
  EXPECT_EQ(end.status == 0, complete) << end.errors;
  EXPECT_EQ(end.output.find("Nothing-2-Hide"), std::string::npos);
  if (!hasValidator()) {
    GTEST_SKIP() << "python3-jsonschema is not here";
  }
  EXPECT_EQ(objectionOfSchema(end.output), "");
}

std::string nameOf(const testing::TestParamInfo<std::string>& info) {
  const fs::path folder = fs::path(info.param).parent_path();
  std::string name = folder.parent_path().filename().string() + "_" +
                     folder.filename().string();
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Cases, FaultyController,
                         testing::ValuesIn(faultFiles()), nameOf);

TEST(ExportedTarget, ThatIsUnreachableIsALine) {
  const RunEnd end = runBrivel({"--bmc", "127.0.0.1:1", "export"});
  const auto server = report::fromJson(linesOf(end.output).at(0));
  ASSERT_TRUE(server) << server.error().cause;
  EXPECT_EQ(server->read.status, report::ReadStatus::kFailed);
  EXPECT_EQ(server->read.failures.at(0).code, end.status);
  EXPECT_EQ(server->target.address, "127.0.0.1:1");
  EXPECT_FALSE(server->health.events);
}

TEST(ExportedFile, StaysWhereTheNewOneHasNoRoom) {
  const support::TempFolder folder;
  const std::string file = folder.write("report.json", "old");
  // Files may not grow beyond 512 bytes, as if the disk were full.
  const RunEnd end =
      runOn("sh",
            {"-c", "trap '' XFSZ; ulimit -f 1; exec \"$0\" \"$@\"",
             BRIVEL_PROGRAM, "--log-level", "0", "--bmc",
             "file:" SAMPLES "/rack-server", "export", "--output", file},
            "");
  EXPECT_EQ(end.status, 11);
  EXPECT_NE(end.errors.find("'" + file + "' cannot be written: File too large"),
            std::string::npos)
      << end.errors;
  EXPECT_NE(end.errors.find("it stays as it was"), std::string::npos);
  EXPECT_EQ(support::fileText(file), "old");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1);
}

TEST(ExportedFile, IsReplacedByAWholeOne) {
  const support::TempFolder folder;
  const std::string file = folder.write("report.json", "old");
  const RunEnd end = runBrivel(
      {"--bmc", "file:" SAMPLES "/rack-server", "export", "--output", file});
  EXPECT_EQ(end.status, 0) << end.errors;
  EXPECT_EQ(end.output, "");
  EXPECT_TRUE(report::fromJson(linesOf(support::fileText(file)).at(0)));
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1);
}

TEST(ExportOptions, AreRefusedWithWhatTheyTake) {
  const auto errorsOf = [](const std::vector<std::string>& options) {
    std::vector<std::string> arguments = {
        "--bmc", "file:" SAMPLES "/rack-server", "export"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const RunEnd end = runBrivel(arguments);
    EXPECT_EQ(end.status, 5);
    EXPECT_EQ(end.output, "");
    return end.errors;
  };
  EXPECT_NE(errorsOf({"--format", "xml"}).find("formats are json"),
            std::string::npos);
  EXPECT_NE(errorsOf({"--device", "fan,"}).find("'' is no item; items are"),
            std::string::npos);
  EXPECT_NE(errorsOf({"--format", "csv"}).find("name it by --device"),
            std::string::npos);
}

TEST(ExportSchema, IsThePublishedOne) {
  const RunEnd end = runBrivel({"export", "--schema"});
  EXPECT_EQ(end.status, 0) << end.errors;
  EXPECT_EQ(end.output, support::fileText(SCHEMA_FILE));
}

}  // namespace
}  // namespace exporting
