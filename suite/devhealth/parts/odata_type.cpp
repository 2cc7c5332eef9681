#include "suite/devhealth/parts/odata_type.h"

namespace devhealth {

OdataType odataTypeOf(const redfish::json::object& resource) {
  std::string_view text = redfish::stringAt(resource, "@odata.type");
  if (!text.empty() && text.front() == '#') {
    text.remove_prefix(1);
  }
  return {text.substr(0, text.find('.')), text.substr(text.rfind('.') + 1)};
}

}  // namespace devhealth
