#pragma once

#include <string>

namespace brivel {

/// The text of --help.
std::string helpText();

/// The text of --version: program and version.
const char* versionText();

}  // namespace brivel
