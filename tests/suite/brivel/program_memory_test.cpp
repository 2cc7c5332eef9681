// The memory of a run that waits for its controller, and what of the password
// stands in it.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/bmc/control/controller.h"
#include "tests/support/child_process.h"
#include "tests/support/temp_folder.h"

namespace {

const char* const kShort = "Ab3-xyz9";  // Fits into a string itself.
const char* const kLong = "a-pass-phrase-of-more-than-sixteen-letters-7";

// The places of the writable memory of another process in which a text stands,
// or nothing where the system does not let this one look.
std::optional<std::size_t> countInMemory(pid_t process,
                                         const std::string& text) {
  const std::string folder = "/proc/" + std::to_string(process);
  const int memory = open((folder + "/mem").c_str(), O_RDONLY | O_CLOEXEC);
  if (memory < 0) {
    return std::nullopt;
  }
  std::size_t count = 0;
  std::ifstream maps(folder + "/maps");
  for (std::string line; std::getline(maps, line);) {
    std::istringstream words(line);
    off_t begin = 0;
    off_t end = 0;
    char dash = 0;
    std::string rights;
    words >> std::hex >> begin >> dash >> end >> rights;
    // What a sanitizer reserves for itself is larger than all memory.
    constexpr off_t kLargest = off_t{1} << 28U;
    if (rights.compare(0, 2, "rw") != 0 || end - begin > kLargest) {
      continue;
    }
    std::string bytes(static_cast<std::size_t>(end - begin), '\0');
    const ssize_t read = pread(memory, bytes.data(), bytes.size(), begin);
    bytes.resize(read < 0 ? 0 : static_cast<std::size_t>(read));
    for (std::size_t at = bytes.find(text); at != std::string::npos;
         at = bytes.find(text, at + 1)) {
      ++count;
    }
  }
  close(memory);
  return count;
}

// Polls for what becomes true in the end; whether it did within ten seconds.
template <typename Condition>
bool becomesTrue(Condition condition) {
  for (int turn = 0; turn < 200; ++turn) {
    if (condition()) {
      return true;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return false;
}

struct Login {
  const char* name;
  const char* password;
  bool fromFile;       // Else from the environment.
  const char* faults;  // Of the controller.
  // Where the password may stand: the run's credential, the session at the
  // service, and what is named in the case.
  std::size_t most;
};

// After the login nothing is answered any more.
constexpr char kStalls[] = R"({"rules": [
  {"match": {"path": "/redfish/v1/Systems"}, "delivery": {"silent": true}}]})";
// There are no sessions, so that HTTP Basic is used.
constexpr char kStallsWithBasic[] = R"({"rules": [
  {"match": {"path": "/redfish/v1/SessionService/Sessions"},
   "answer": {"status": 404}},
  {"match": {"path": "/redfish/v1/Systems"}, "delivery": {"silent": true}}]})";

const Login kLogins[] = {
    {"ShortFromTheEnvironment", kShort, false, kStalls, 2},
    {"LongFromTheEnvironment", kLong, false, kStalls, 2},
    {"ShortFromAFile", kShort, true, kStalls, 2},
    {"LongFromAFile", kLong, true, kStalls, 2},
    {"LongWithBasic", kLong, true, kStallsWithBasic, 4},
};

class ProgramMemory : public testing::TestWithParam<Login> {};

TEST_P(ProgramMemory, HoldsThePasswordInKnownPlacesOnly) {
#if defined(SYSHEALTH_SANITIZED)
  GTEST_SKIP() << "the sanitizers keep copies of the environment and of what "
                  "was freed";
#endif
  const Login& login = GetParam();
  const support::TempFolder folder;
  const bmc::Controller controller(
      {"--tree", SAMPLES "/rack-server", "--faults",
       folder.write("faults.json", login.faults), "--password-file",
       folder.write("account", login.password)});
  ASSERT_TRUE(controller.running());

  support::ChildOptions options;
  options.program = BRIVEL_PROGRAM;
  options.environment = support::sanitizerOptions();
  options.environment.push_back("HOME=" + folder.path().string());
  options.environment.push_back("BRIVEL_MODULES=" SOUND_MODULES);
  options.arguments = {"--bmc", "https://admin@" + controller.https(),
                       "--cacert", controller.ready().certificate};
  if (login.fromFile) {
    options.arguments.insert(
        options.arguments.end(),
        {"--password-file", folder.write("pw", login.password)});
  } else {
    options.environment.push_back(std::string("BRIVEL_PASSWORD=") +
                                  login.password);
  }
  options.arguments.insert(options.arguments.end(), {"sample", "301"});
  support::ChildProcess run(options);
  // Root, the login, and the request that is never answered.
  const bool stalls = becomesTrue([&] {
    const bmc::Counters counters = controller.counters();
    return counters.requests >= 3 && counters.openRequests > 0;
  });
  run.signal(SIGSTOP);
  const std::optional<std::size_t> found =
      countInMemory(run.id(), login.password);
  const std::string problem = std::strerror(errno);
  run.signal(SIGCONT);
  run.signal(SIGTERM);
  run.wait();

  ASSERT_TRUE(stalls) << run.errors();
  if (!found) {
    GTEST_SKIP() << "the memory of a child cannot be read (" << problem
                 << "): this takes root, or the right to trace processes";
  }
  EXPECT_GE(*found, 1U) << "the run has lost its password";
  EXPECT_LE(*found, login.most);
}

INSTANTIATE_TEST_SUITE_P(Logins, ProgramMemory, testing::ValuesIn(kLogins),
                         [](const auto& login) { return login.param.name; });

}  // namespace
