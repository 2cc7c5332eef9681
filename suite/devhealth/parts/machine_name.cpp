#include "suite/devhealth/parts/machine_name.h"

#include "suite/base/ascii.h"

namespace devhealth {

std::string machineName(const std::string& maker, const std::string& model) {
  if (model.empty() || maker.empty() ||
      base::startsIgnoringCase(model, maker)) {
    return model;
  }
  return maker + " " + model;
}

}  // namespace devhealth
