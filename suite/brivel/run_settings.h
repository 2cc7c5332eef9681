#pragma once

#include <optional>
#include <string>

#include "suite/connection/settings/settings.h"

namespace brivel {

/// The settings of a run: those of the file that the command line names, else
/// (`chosenFile` is empty) those of the usual places, else none. Returns
/// nullopt and sets `error` if they cannot be read.
std::optional<connection::Settings> readRunSettings(
    const std::string& chosenFile, std::string& error);

}  // namespace brivel
