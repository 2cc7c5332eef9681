#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "bench/controller/program.h"

namespace bench {

/// A controller with one processor that does one thing after another, and the
/// network on the way to it.
struct Slowness {
  unsigned fullHandshakeMs = 0;
  unsigned resumedHandshakeMs = 0;
  unsigned requestMs = 0;
  unsigned roundTripMs = 0;
};

/// What brivel is to do, and under which circumstances.
struct Job {
  std::string name;
  std::vector<std::string> arguments;  ///< After "syshealth".
  unsigned delayMs = 0;                ///< Of each answer.
  bool expand = false;                 ///< The controller offers `$expand`.
  unsigned connections = 4;            ///< At most.
  std::string sample = "rack-server";  ///< What the controller serves.
  Slowness slowness = {};
  bool walk = false;  ///< The service has no list of active conditions.
  /// More of the controller's fault file: its members, without the braces.
  std::string faults = {};
  std::string circumstances = {};  ///< What these are, in words.
  bool curl = true;                ///< Let curl fetch the same URLs.
};

/// What it took.
struct Outcome {
  std::size_t requests = 0;  ///< Login and logout included.
  std::size_t levels = 0;    ///< As brivel counts them (--stats).
  std::size_t connections = 0;
  std::size_t resumed = 0;       ///< Of the connections.
  std::size_t mostUnderWay = 0;  ///< Requests, at any time.
  Run brivel;  ///< Medians of all runs, each figure for itself.
  Run curl;    ///< Likewise, of curl fetching the same URLs in parallel, where
               ///< the job wants it.
};

/// Does a job `runs` times, each against a new controller. Nothing, and the
/// reason in `error`, when a run fails.
std::optional<Outcome> measure(const Job& job, unsigned runs,
                               std::string& error);

}  // namespace bench
