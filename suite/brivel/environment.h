#pragma once

#include <string>

namespace brivel {

/// A variable of the environment as UTF-8; empty when it is not set.
std::string environmentValue(const char* name);

}  // namespace brivel
