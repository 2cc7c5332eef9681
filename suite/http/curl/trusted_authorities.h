#pragma once

#include <string>

namespace http {

/// Whether a directory holds certificates under the hashes of their names
/// ("1a2b3c4d.0"), as OpenSSL looks them up one by one when it needs them.
bool isHashedDirectory(const std::string& directory);

}  // namespace http
