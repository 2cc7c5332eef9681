#pragma once

#include <string>

namespace brivel {

/// What "--version" prints: "brivel" and the version in the first line, then
/// the commit that was built, and the libraries in use.
std::string versionText();

}  // namespace brivel
