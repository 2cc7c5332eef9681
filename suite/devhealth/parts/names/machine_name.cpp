#include "suite/devhealth/parts/names/machine_name.h"

#include "suite/base/ascii.h"
#include "suite/devhealth/parts/value.h"

namespace devhealth {

std::string machineName(const std::string& maker, const std::string& model) {
  if (model.empty() || maker.empty() ||
      base::startsIgnoringCase(model, maker)) {
    return model;
  }
  return maker + " " + model;
}

std::string stockNumber(std::string_view sku) {
  constexpr std::string_view kKey = "SKU=";
  if (base::startsWith(sku, kKey)) {
    sku.remove_prefix(kKey.size());
    sku = sku.substr(0, sku.find(';'));
  }
  return recordText(sku);
}

}  // namespace devhealth
