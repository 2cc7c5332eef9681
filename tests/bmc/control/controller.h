#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/bmc/control/ready.h"
#include "tests/bmc/record/counters.h"
#include "tests/support/child_process.h"
#include "tests/support/temp_folder.h"

namespace bmc {

/// One request as the controller's log has it.
struct LoggedRequest {
  std::uint64_t connection = 0;
  std::string method;
  std::string target;
  int status = 0;
  std::string authentication;  ///< "none", "token", "basic" or "refused".
  std::int64_t arrivedUs = 0;  ///< Since the controller's start.
  std::int64_t doneUs = 0;
  bool complete = false;                       ///< The answer was sent whole.
  std::map<std::string, std::string> headers;  ///< Secrets withheld.
};

/// A controller for the length of a test: a process of its own, started with
/// the object and ended with it, in a folder that goes away with it.
class Controller {
 public:
  /// Starts a controller with further arguments, such as {"--tree", FOLDER},
  /// and waits until it is ready. Whether that went well, `running` says.
  explicit Controller(const std::vector<std::string>& arguments);
  ~Controller();  ///< Stops it.

  Controller(const Controller&) = delete;
  Controller& operator=(const Controller&) = delete;

  /// Path of the built program.
  static std::string program();

  /// Whether it came up; if not, it has said why on standard error.
  bool running() const { return running_; }

  /// Addresses with port: "127.0.0.1:40001".
  std::string https() const;
  std::string http() const;

  /// Its other addresses and files.
  const Ready& ready() const { return ready_; }

  /// What it has counted so far.
  Counters counters() const;

  /// The requests that it has answered so far, in the order of their ends.
  std::vector<LoggedRequest> requests() const;

  /// Its log so far, one JSON object a line.
  std::string log() const;

  /// Ends it in order. Its exit status, or 128 and the number of the signal
  /// that ended it, or -1 when it was never started; the same again when it
  /// was stopped before.
  int stop();

 private:
  bool spawn(const std::vector<std::string>& arguments);
  bool awaitReadiness();

  support::TempFolder folder_;
  int lifeline_ = -1;  ///< Its standard input: it ends with this descriptor.
  std::optional<support::ChildProcess> process_;
  bool running_ = false;
  Ready ready_;
};

}  // namespace bmc
