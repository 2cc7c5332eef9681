#pragma once

#include <string>
#include <vector>

namespace recording {

using Arguments = std::vector<std::string>;

/// The password of the controllers of tests/bmc.
constexpr const char* kPassword = "Nothing-2-Hide";

/// How a run of brivel ended and what it wrote.
struct Ended {
  int status = 0;
  std::string output;
  std::string errors;
};

/// Runs brivel in the root of the source tree with a home of its own and the
/// password in the environment. Lines of errors name no log.
Ended run(Arguments arguments, const Arguments& further = {});

}  // namespace recording
