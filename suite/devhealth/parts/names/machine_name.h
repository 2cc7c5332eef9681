#pragma once

#include <string>
#include <string_view>

namespace devhealth {

/// Maker and model of a machine, or the model alone if it begins with the
/// maker's name. Empty without a model.
std::string machineName(const std::string& maker, const std::string& model);

/// The stock number in a SKU: the a of "SKU=a;ModelName=b", as some firmware
/// writes it; any other text as it is. Empty if there is none.
std::string stockNumber(std::string_view sku);

}  // namespace devhealth
