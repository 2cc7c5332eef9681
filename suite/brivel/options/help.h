#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "suite/args/specification.h"
#include "suite/brivel/options/options.h"

namespace brivel {

/// The width of the help where no terminal sets another.
constexpr std::size_t kHelpWidth = 80;

// The texts below are folded at `width` columns, but no narrower than 40.

/// The help on one screen: usage, examples, the names of the applications, and
/// the options that most runs need.
std::string shortHelp(const std::vector<std::string>& applications,
                      std::size_t width = kHelpWidth);

/// The help of one application: what it does and its own options.
std::string applicationHelp(const std::string& application,
                            const args::Specification& specification,
                            const OptionList& options,
                            std::size_t width = kHelpWidth);

/// The whole help: every option, host command and exit status.
std::string fullHelp(std::size_t width = kHelpWidth);

}  // namespace brivel
