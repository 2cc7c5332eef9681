#pragma once

#include <string>

namespace bench {

/// Writes the firmware's table of a recorded machine into one file, behind an
/// entry point that says where it begins there, as dmidecode reads dumps.
/// Whether the table could be read and the file be written.
bool writeDump(const std::string& recordedMachine, const std::string& file);

}  // namespace bench
