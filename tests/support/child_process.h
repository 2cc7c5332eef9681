#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/temp_folder.h"

namespace support {

/// What a program is started with. Its signals mean what they mean to a
/// program at a terminal, and a crash leaves as much as the system lets it.
struct ChildOptions {
  std::string program;                   ///< Looked for as execvpe does.
  std::vector<std::string> arguments;    ///< Without the program's name.
  std::vector<std::string> environment;  ///< "NAME=value"; nothing else is set.
  std::filesystem::path directory;       ///< Where it runs; empty: here.
  std::string input;                     ///< Text on its standard input.
  std::string outputFile;  ///< Receives its standard output; empty: kept.
  /// Descriptors of this process in place of its standard streams; -1: none.
  int inputDescriptor = -1;
  int outputDescriptor = -1;
  int errorDescriptor = -1;
  /// A terminal of its own for standard input and standard error.
  bool terminal = false;
  std::vector<int> closed;  ///< Descriptors that it starts without.
  /// After so long it is ended by SIGALRM, even if this process has gone.
  /// Zero: never.
  std::chrono::seconds timeLimit{60};
};

/// How a program ended, and what it took.
struct ChildEnd {
  int status = 0;              ///< Exit status, or 128 and the signal's number.
  bool dumpedCore = false;     ///< It left a picture of its memory.
  double milliseconds = 0;     ///< From start to end.
  double cpuMilliseconds = 0;  ///< Of the processor, its own and the system's.
  /// The most memory that it had resident; never less than this process had
  /// when it started it.
  std::uint64_t kibibytes = 0;
};

/// The environment of this process, as ChildOptions takes it.
std::vector<std::string> ownEnvironment();

/// The options of the sanitizers in the environment of this process, which a
/// child needs as well.
std::vector<std::string> sanitizerOptions();

/// A program that runs beside this process. One that cannot be started ends
/// with status 127.
class ChildProcess {
 public:
  /// Throws std::system_error when there is no new process, or no terminal
  /// for one that is to have it.
  explicit ChildProcess(const ChildOptions& options);
  ~ChildProcess();  ///< Kills it if it still runs.

  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  pid_t id() const { return process_; }

  /// Sends a signal; nothing when the end has been waited for.
  void signal(int number) const;

  /// Types on its terminal.
  void type(const std::string& text) const;

  /// Reads its terminal until the text has come, ten seconds at most. Whether
  /// it came.
  bool await(const std::string& text);

  /// Whether its terminal shows what is typed, as it was left.
  bool terminalEchoes() const;

  /// Waits for its end, at most so long; nullopt when it still runs then.
  /// What a terminal shows is not read meanwhile.
  std::optional<ChildEnd> waitFor(std::chrono::milliseconds patience);

  /// Waits for its end. What a terminal shows is read meanwhile.
  ChildEnd wait();

  /// What it wrote, once it has ended, where it was kept; on a terminal,
  /// errors are all that was shown there.
  std::string output() const;
  std::string errors() const;

 private:
  [[noreturn]] void become(const ChildOptions& options, char* const* arguments,
                           char* const* environment) const;
  bool readTerminal(int timeoutMilliseconds);
  bool reap(int flags);

  TempFolder folder_;
  std::chrono::steady_clock::time_point start_;
  pid_t process_ = -1;
  int terminal_ = -1;
  std::string shown_;
  std::optional<ChildEnd> end_;
};

/// Runs a program to its end.
ChildEnd runChild(const ChildOptions& options);

}  // namespace support
