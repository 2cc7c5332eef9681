#pragma once

#include <filesystem>

#include "tests/golden/case.h"

namespace golden {

/// What is the same for all cases of a test program.
struct Setting {
  std::filesystem::path program;  ///< brivel.
  std::filesystem::path root;     ///< Root of the source tree; runs start here.
  bool refresh = false;           ///< Keep what comes instead of comparing.
  bool underWine = false;  ///< Under Wine, whose memory is counted as well.
};

/// Runs a case in a folder of its own and compares standard output, standard
/// error, exit status, log, counters and limits; reports differences as test
/// failures.
void runCase(const Case& theCase, const Setting& setting);

}  // namespace golden
