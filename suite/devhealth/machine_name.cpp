#include "suite/devhealth/machine_name.h"

#include "suite/devhealth/ascii.h"

namespace devhealth {

std::string machineName(const std::string& maker, const std::string& model) {
  if (model.empty() || maker.empty() || startsIgnoringCase(model, maker)) {
    return model;
  }
  return maker + " " + model;
}

}  // namespace devhealth
