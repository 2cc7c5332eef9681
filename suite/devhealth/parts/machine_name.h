#pragma once

#include <string>

namespace devhealth {

/// What a machine is called after its maker and model: both, or the model
/// alone when it begins with the maker's name. Empty without a model.
std::string machineName(const std::string& maker, const std::string& model);

}  // namespace devhealth
