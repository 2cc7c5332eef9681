#pragma once

namespace brivel {

/// The text of --help.
const char* helpText();

/// The text of --version: program and version.
const char* versionText();

}  // namespace brivel
