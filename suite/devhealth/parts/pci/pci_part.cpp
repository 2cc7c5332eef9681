#include "suite/devhealth/parts/pci/pci_part.h"

#include "suite/devhealth/parts/value.h"

namespace devhealth {
namespace {

namespace json = redfish::json;

bool isDevice(PciKind kind) {
  return kind == PciKind::kDevice || kind == PciKind::kListed;
}

}  // namespace

PciFields fieldsOf(const PciPart& part) {
  PciFields fields;
  if (part.part.object == nullptr) {
    return fields;
  }
  const json::object& object = *part.part.object;
  const bool listed = part.kind == PciKind::kListed;
  fields.manufacturer = textAt(object, "Manufacturer");
  fields.model = textAt(object, listed ? "ProductPartNumber" : "Model");
  fields.serialNumber = textAt(object, "SerialNumber");
  fields.partNumber = textAt(object, "PartNumber");
  if (listed && fields.partNumber.empty()) {
    fields.partNumber = fields.model;
  }
  fields.sku = textAt(object, "SKU");
  if (fields.sku.empty() && isDevice(part.kind)) {
    fields.sku = textAt(object, "SparePartNumber");
  }
  return fields;
}

PartClass pciClassOf(const PciPart& part) {
  switch (part.kind) {
    case PciKind::kDevice:
    case PciKind::kListed:
      break;
    case PciKind::kAdapter:
      return classOfType("NetworkAdapter");
    case PciKind::kController:
      return classOfType("StorageController");
    case PciKind::kProcessor: {
      PartClass partClass = classOfType("Processor");
      if (part.part.object != nullptr) {
        std::string type = textAt(*part.part.object, "ProcessorType");
        if (!type.empty()) {
          partClass.word = std::move(type);
        }
      }
      return partClass;
    }
  }
  return classOfType("PCIeDevice");
}

std::string pciTagOf(const PciPart& part) {
  if (part.part.object == nullptr) {
    return {};
  }
  const json::object& object = *part.part.object;
  std::string id = textAt(object, "Id");
  if (!id.empty() || part.storage == nullptr) {
    return id;
  }
  std::string storage = textAt(*part.storage, "Id");
  const std::string member = firstTextAt(object, {"MemberId", "MemberID"});
  if (part.onlyController || member.empty()) {
    return storage;
  }
  return storage.empty() ? member : storage + "/" + member;
}

}  // namespace devhealth
