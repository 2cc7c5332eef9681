#pragma once

#include <memory>
#include <string>

#include "export/format.h"
#include "export/options.h"

namespace exporting {

/// The form that the options name. Returns null and sets `error` if there is
/// none of that name, or it does not go with the other options.
std::unique_ptr<Format> makeFormat(const Options& options, std::string& error);

}  // namespace exporting
