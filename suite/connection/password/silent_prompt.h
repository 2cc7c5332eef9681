#pragma once

#include <optional>
#include <string>

#include "suite/base/result.h"
#include "suite/base/secret.h"

namespace connection {

/// What this system calls a terminal, for messages.
#ifdef _WIN32
inline constexpr char kTerminalWord[] = "console";
#else
inline constexpr char kTerminalWord[] = "terminal";
#endif

/// Whether a person could be asked: standard input is a terminal.
bool inputIsTerminal();

/// Asks the person at the terminal that standard input is, and reads the answer
/// without showing it. Returns nullopt, without having asked, if the terminal
/// cannot be kept from showing it.
std::optional<base::Result<base::Secret>> askSilently(
    const std::string& question);

}  // namespace connection
