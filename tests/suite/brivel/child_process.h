#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

/// What a program is started with.
struct ChildOptions {
  std::string program;
  std::vector<std::string> arguments;    ///< Without the program's name.
  std::vector<std::string> environment;  ///< "NAME=value"; nothing else is set.
  std::string input;                     ///< Text on its standard input.
  /// A terminal of its own for standard input and standard error.
  bool terminal = false;
  /// Where standard output goes: a file, a descriptor, or, without either, it
  /// is kept.
  std::string outputFile;
  int outputDescriptor = -1;
  /// Descriptors to be closed before it starts.
  std::vector<int> closed;
};

/// A program that runs beside the test, in a folder of its own.
class ChildProcess {
 public:
  explicit ChildProcess(const ChildOptions& options);
  ~ChildProcess();  ///< Kills it if it still runs.

  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  void signal(int number) const;

  /// Types on its terminal.
  void type(const std::string& text) const;

  /// Reads its terminal until the text has come, ten seconds at most. Whether
  /// it came.
  bool await(const std::string& text);

  /// Waits for its end, a minute at most. Its exit status, or 128 and the
  /// number of the signal that ended it.
  int wait();

  /// What it wrote, once it has ended; on a terminal, errors are all that was
  /// shown there.
  std::string output() const;
  std::string errors() const;

 private:
  bool readTerminal(int timeoutMilliseconds);

  std::filesystem::path folder_;
  pid_t process_ = -1;
  int terminal_ = -1;
  std::string shown_;
};
