#pragma once

#include <cstdlib>

/// Ends the process when a promise of the code under test is broken; the
/// fuzzer reports the input.
inline void require(bool promise) {
  if (!promise) {
    std::abort();
  }
}
