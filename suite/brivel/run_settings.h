#pragma once

#include <string>

#include "suite/base/result.h"
#include "suite/connection/settings/settings.h"

namespace brivel {

/// The settings of a run: those of the file that the command line names, else
/// (`chosenFile` is empty) those of the usual places, else none. Returns a
/// failure of kind `kUsage` if they cannot be read.
base::Result<connection::Settings> readRunSettings(
    const std::string& chosenFile);

}  // namespace brivel
