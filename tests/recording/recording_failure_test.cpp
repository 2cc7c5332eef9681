// --record where something is wrong: the folder, the run, the controller.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/bmc/control/controller.h"
#include "tests/recording/identifying_values.h"
#include "tests/recording/program_run.h"
#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace recording {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::IsEmpty;

const Arguments kSample = {"--bmc", "file:samples/rack-server"};

Arguments recordedTo(Arguments target, const std::string& folder) {
  target.insert(target.end(), {"--record", folder});
  return target;
}

class RecordFailure : public testing::Test {
 protected:
  support::TempFolder home;
};

TEST_F(RecordFailure, FolderInUseIsRefusedBeforeAnythingIsRead) {
  home.write("used/file", "mine");
  const Ended end = run(recordedTo(kSample, home.at("used")), {"syshealth"});
  EXPECT_EQ(end.status, 2);
  EXPECT_EQ(end.output, "");
  EXPECT_THAT(end.errors, HasSubstr("--record " + home.at("used") +
                                    ": it is not empty; name a folder that is "
                                    "new or empty"));
  EXPECT_FALSE(fs::exists(home.at("used/INCOMPLETE")));
}

TEST_F(RecordFailure, FolderThatCannotBeMadeCostsNoReport) {
  home.write("plain", "");
  const Ended plain = run(kSample, {"syshealth"});
  const Ended end =
      run(recordedTo(kSample, home.at("plain/below")), {"syshealth"});
  EXPECT_EQ(end.output, plain.output);
  EXPECT_EQ(end.status, 11);
  EXPECT_THAT(end.errors, HasSubstr("--record " + home.at("plain/below") +
                                    ": it cannot be written: Not a directory"));
}

TEST_F(RecordFailure, RawAloneIsRefused) {
  const Ended end = run({"--record-raw"}, {"syshealth"});
  EXPECT_EQ(end.status, 2);
  EXPECT_THAT(end.errors,
              HasSubstr("--record-raw is for --record DIR, which is missing"));
}

TEST_F(RecordFailure, RunThatReadsNothingLeavesAMark) {
  const Ended end =
      run(recordedTo({"--bmc", "http://127.0.0.1:1"}, home.at("nothing")),
          {"syshealth"});
  EXPECT_EQ(end.status, 13);
  EXPECT_THAT(end.errors, HasSubstr("the recording is incomplete: "));
  EXPECT_TRUE(fs::exists(home.at("nothing/INCOMPLETE")));
}

TEST_F(RecordFailure, FailedAnswersAreReadAgainAsTheyWere) {
  const std::string faults = home.write("faults.json", R"({"rules": [
      {"match": {"path": "/redfish/v1/Systems/1/Memory"},
       "answer": {"status": 403, "body": "{\"error\": {\"message\": \"Host alpha-n17 says no.\"}}"}},
      {"match": {"path": "/redfish/v1/Chassis/1/PowerSubsystem"},
       "answer": {"status": 500}},
      {"match": {"path": "/redfish/v1/Systems/1/Processors"},
       "answer": {"status": 200, "body": "{\"Members\": [{"}}]})");
  const bmc::Controller controller(
      {"--tree", std::string(BRIVEL_SOURCE_ROOT) + "/samples/rack-server",
       "--faults", faults});
  ASSERT_TRUE(controller.running());
  const Arguments target = {"--bmc", "admin@" + controller.https(), "--cacert",
                            controller.ready().certificate};
  for (const char* item : {"dimm", "power", "processor", "fan"}) {
    const Arguments report = {"syshealth", "--device", item};
    const Ended live =
        run(recordedTo(target, home.at(std::string("of-") + item)), report);
    const Ended again =
        run({"--bmc", "file:" + home.at(std::string("of-") + item)}, report);
    EXPECT_EQ(live.status != 0, item != std::string("fan")) << item;
    EXPECT_EQ(again.output, live.output) << item;
    EXPECT_EQ(again.status, live.status) << item << again.errors;
  }
}

TEST_F(RecordFailure, LoginThatIsRepeatedBackIsNotStored) {
  const std::string faults = home.write("faults.json", R"({"rules": [
      {"match": {"path": "/redfish/v1/Systems/1", "method": "GET"},
       "change": {"set": {"/Name": "Nothing-2-Hide",
                          "/Oem": {"It": "is Nothing-2-Hide."}}}}]})");
  const bmc::Controller controller(
      {"--tree", std::string(BRIVEL_SOURCE_ROOT) + "/samples/rack-server",
       "--faults", faults});
  ASSERT_TRUE(controller.running());
  for (const char* raw : {"--record-raw", "--stats"}) {
    EXPECT_EQ(
        run({"--bmc", "admin@" + controller.https(), "--cacert",
             controller.ready().certificate, "--record", home.at(raw), raw},
            {"syshealth"})
            .status,
        0);
    EXPECT_TRUE(fs::exists(home.at(raw) + "/redfish/v1/Systems/1/index.json"));
    EXPECT_THAT(foundBelow(home.at(raw), {"nothing-2-hide"}), IsEmpty());
  }
}

}  // namespace
}  // namespace recording
