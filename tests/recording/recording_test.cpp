// --record with the whole program: every sample, read from its folder and from
// a controller over HTTPS, gives the same report when its recording is read,
// and a masked recording holds nothing that identifies the server. The same
// for recordings of real servers, where there are any (BRIVEL_RECORDINGS, else
// ../shared/trees beside the source tree).

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "tests/bmc/control/controller.h"
#include "tests/recording/identifying_values.h"
#include "tests/recording/program_run.h"
#include "tests/support/temp_folder.h"

namespace recording {
namespace {

namespace fs = std::filesystem;
const std::vector<Arguments> kReports = {{"syshealth"},
                                         {"syshealth", "--device", "all"}};

// Records what a target reports as it is and masked, and reads both again.
void checkTarget(const Arguments& target) {
  for (const Arguments& report : kReports) {
    SCOPED_TRACE(target[1] + " " + report.back());
    const support::TempFolder folder;
    const Ended live = run(target, report);

    Arguments recorded = target;
    recorded.insert(recorded.end(),
                    {"--record", folder.at("raw"), "--record-raw"});
    const Ended raw = run(recorded, report);
    EXPECT_EQ(raw.output, live.output);
    EXPECT_EQ(raw.errors, live.errors);
    const Ended rawAgain = run({"--bmc", "file:" + folder.at("raw")}, report);
    EXPECT_EQ(rawAgain.output, live.output);
    EXPECT_EQ(rawAgain.status, live.status);

    const std::set<std::string> values = identifyingValues(folder.at("raw"));
    EXPECT_THAT(values, testing::Not(testing::IsEmpty()));
    recorded = target;
    recorded.insert(recorded.end(), {"--record", folder.at("masked")});
    EXPECT_EQ(run(recorded, report).output, live.output);
    const Ended again = run({"--bmc", "file:" + folder.at("masked")}, report);
    EXPECT_EQ(again.status, live.status);
    EXPECT_EQ(withoutValues(again.output, live.output, values),
              withoutValues(live.output, live.output, values));

    EXPECT_THAT(foundBelow(folder.at("masked"), distinctValues(values)),
                testing::IsEmpty());
    EXPECT_THAT(foundBelow(folder.path(), {"nothing-2-hide"}),
                testing::IsEmpty());
    EXPECT_FALSE(fs::exists(folder.at("masked") + "/INCOMPLETE"));
  }
}

// `user`: who logs in, such as "admin@"; empty: nobody, where a recording may
// not have the collection of sessions.
void checkTree(const fs::path& tree, const std::string& user) {
  SCOPED_TRACE(tree.filename().string());
  checkTarget({"--bmc", "file:" + tree.string()});
  for (const Arguments& further :
       {Arguments{}, Arguments{"--expand", "2", "--page-size", "2"}}) {
    Arguments arguments = {"--tree", tree.string()};
    arguments.insert(arguments.end(), further.begin(), further.end());
    if (user.empty()) {
      arguments.emplace_back("--open");
    }
    const bmc::Controller controller(arguments);
    ASSERT_TRUE(controller.running());
    checkTarget({"--bmc", user + controller.https(), "--cacert",
                 controller.ready().certificate});
  }
}

class RecordedSample : public testing::TestWithParam<const char*> {};

TEST_P(RecordedSample, GivesTheSameReportAndHidesWhatIdentifies) {
  checkTree(fs::path(BRIVEL_SOURCE_ROOT) / "samples" / GetParam(), "admin@");
}

INSTANTIATE_TEST_SUITE_P(Samples, RecordedSample,
                         testing::Values("rack-server", "two-node",
                                         "old-schema", "accelerator-server",
                                         "tagged-server", "linkless-blades",
                                         "edge"));

class RecordedMachine : public testing::TestWithParam<const char*> {};

TEST_P(RecordedMachine, GivesTheSameReportAndHidesWhatIdentifies) {
  const Arguments target = {"--local-root",
                            std::string("samples/") + GetParam()};
  const Arguments report = {"syshealth", "--device", "all"};
  const support::TempFolder folder;
  const Ended live = run(target, report);
  EXPECT_EQ(live.status, 0);
  for (const Arguments& further :
       {Arguments{"--record", folder.at("raw"), "--record-raw"},
        Arguments{"--record", folder.at("masked")}}) {
    Arguments recorded = target;
    recorded.insert(recorded.end(), further.begin(), further.end());
    EXPECT_EQ(run(recorded, report).output, live.output);
  }
  EXPECT_EQ(run({"--local-root", folder.at("raw")}, report).output,
            live.output);
  // What identifies these machines, as their tables show it.
  const std::set<std::string> values = {
      "hv7200-00417", "3d9a41c8-7e02-4f5b-a6d1-90c4f82b57e3", "om-70311"};
  EXPECT_THAT(foundBelow(folder.at("masked"), values), testing::IsEmpty());
  const Ended again = run({"--local-root", folder.at("masked")}, report);
  EXPECT_EQ(again.status, 0);
  EXPECT_EQ(again.output.size(), live.output.size());
  EXPECT_EQ(again.output.find("3d9a41c8"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Samples, RecordedMachine,
                         testing::Values("local-server", "local-odd"));

TEST(RecordedServers, GiveTheSameReportAndHideWhatIdentifies) {
  const char* const named = std::getenv("BRIVEL_RECORDINGS");
  const fs::path folder = named != nullptr ? named : RECORDINGS_DIR;
  if (!fs::is_directory(folder)) {
    GTEST_SKIP() << "there are no recordings in " << folder;
  }
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (entry.is_directory()) {
      checkTree(entry.path(), "");
    }
  }
}

}  // namespace
}  // namespace recording
