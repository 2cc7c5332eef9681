#pragma once

#include <string>
#include <string_view>

namespace devhealth {

/// What a machine is called after its maker and model: both, or the model
/// alone when it begins with the maker's name. Empty without a model.
std::string machineName(const std::string& maker, const std::string& model);

/// The stock number in a SKU: of "SKU=a;ModelName=b", as some firmware writes
/// it, the a; any other text as it is. Empty where there is none.
std::string stockNumber(std::string_view sku);

}  // namespace devhealth
