#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "bench/controller/program.h"

namespace bench {

/// What brivel is to do, and under which circumstances.
struct Job {
  std::string name;
  std::vector<std::string> arguments;  ///< After "syshealth".
  unsigned delayMs = 0;                ///< Of each answer.
  bool expand = false;                 ///< The controller offers `$expand`.
  unsigned connections = 4;            ///< At most.
  std::string sample = "rack-server";  ///< What the controller serves.
};

/// What it took.
struct Outcome {
  std::size_t requests = 0;  ///< Login and logout included.
  std::size_t levels = 0;    ///< As brivel counts them (--stats).
  std::size_t connections = 0;
  Run brivel;  ///< Medians of all runs, each figure for itself.
  Run curl;    ///< Likewise, of curl fetching the same URLs in parallel.
};

/// Does a job `runs` times, each against a new controller, and each time lets
/// curl fetch the same URLs. Nothing, and the reason in `error`, when a run
/// fails.
std::optional<Outcome> measure(const Job& job, unsigned runs,
                               std::string& error);

}  // namespace bench
