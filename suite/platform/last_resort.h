#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace platform {

/// The last resort against work that neither a time limit nor an interrupt
/// ends, because it never comes to look at them. While any of these live, the
/// process ends by itself, with a line on standard error and in the file of
/// `setLastWordsFile`, `kLastResort` after the latest of their ends, or after
/// the user asked to end the run. Only work on what came from outside is
/// watched, never a write to a reader that takes its time. Threads may have one
/// each.
class LastResort {
 public:
  explicit LastResort(std::chrono::steady_clock::time_point until);
  ~LastResort();

  LastResort(const LastResort&) = delete;
  LastResort& operator=(const LastResort&) = delete;

 private:
  /// Has the system end the process when so much time has passed; nullopt: not
  /// at all any more. Not called by two threads at a time.
  static void setTimer(std::optional<std::chrono::steady_clock::duration> left);

  std::chrono::steady_clock::time_point until_;
};

/// More than what a run may take beyond its end: a second, and 5 seconds each
/// for the answer of a login under way and for the logout.
constexpr std::chrono::seconds kLastResort{12};

/// The exit status of a process that was ended so: that of a server whose
/// answers could not be read.
constexpr int kLastResortStatus = 10;

/// Has the last resort write its line into a file, too: a descriptor, on
/// Windows a HANDLE, that the caller keeps open until it names another; -1:
/// none.
void setLastWordsFile(std::intptr_t file) noexcept;

/// The file named last; -1: none.
std::intptr_t lastWordsFile() noexcept;

/// To be called by the handler of an interrupt, and by nobody else.
void interruptLastResort() noexcept;

}  // namespace platform
