#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace soak {

/// One run and what goes wrong in it, all of it drawn from a seed.
struct RandomRun {
  std::string sample;                  ///< A name below samples/.
  std::string faults;                  ///< The controller's fault file.
  std::vector<std::string> bmc;        ///< Its further arguments.
  std::vector<std::string> arguments;  ///< Of brivel, without the target.
  int signal = 0;                      ///< Sent while it runs; 0: none.
  std::chrono::milliseconds after{0};  ///< The signal's time.
  std::vector<int> closed;             ///< Standard streams it starts without.
  /// The faults may keep a login's answer or a logout from their end, or say
  /// that a session has ended (401), so that one may stay without any fault of
  /// the run.
  bool mayLoseSession = false;
  /// The faults may take a session's token and place out of a login's answer,
  /// so that the run cannot know of it.
  bool mayHideSession = false;
};

/// The same run for the same seed, on every machine.
RandomRun randomRun(std::uint64_t seed);

}  // namespace soak
