#pragma once

#include <cstdlib>

/// Ends the process when a promise of the code under test is broken; the
/// fuzzer reports the input.
inline void check(bool promise) {
  if (!promise) {
    std::abort();
  }
}
