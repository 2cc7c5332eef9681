#include "suite/devhealth/parts/names/same_parts.h"

#include "suite/devhealth/parts/names/part_class.h"
#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/document_path.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using redfish::Uri;

// The document key of the chassis that a part lies in; empty for none.
std::string_view chassisOf(const Uri& uri) {
  const std::string_view document = uri.document();
  const std::string_view segment = redfish::segmentOf(document, 3);
  if (redfish::segmentOf(document, 2) != "Chassis" || segment.empty()) {
    return {};
  }
  return document.substr(
      0, static_cast<std::size_t>(segment.data() - document.data()) +
             segment.size());
}

std::string idOf(const json::object& part) {
  return firstTextAt(part, {"Id", "MemberId", "MemberID"});
}

}  // namespace

SameParts::SameParts(const redfish::Node& node) {
  std::map<std::string, int> counts;
  for (const redfish::Resource* chassis : node.chassis) {
    ++counts[idOf(chassis->body)];
  }
  for (const redfish::Resource* chassis : node.chassis) {
    std::string id = idOf(chassis->body);
    if (!id.empty() && counts[id] > 1) {
      twins_.emplace(chassis->uri.document(), std::move(id));
    }
  }
}

std::string SameParts::keyOf(std::string_view kind, std::string_view chassis,
                             const json::object& part) const {
  const std::string serial = textAt(part, "SerialNumber");
  const std::string name = textAt(part, "Name");
  std::string key(kind);
  if (!serial.empty()) {
    key += "\nserial\n" + serial + '\n' + name;
    return isName(name) ? key : key + '\n' + idOf(part);
  }
  const auto twin = twins_.find(chassis);
  if (twin == twins_.end()) {
    return {};
  }
  return key + "\nchassis\n" + twin->second + '\n' + name + '\n' + idOf(part);
}

const Uri* SameParts::add(std::string_view kind, const Uri& uri,
                          const json::object& part) {
  const std::string_view chassis = chassisOf(uri);
  if (chassis.empty()) {
    return nullptr;
  }
  std::string key = keyOf(kind, chassis, part);
  if (key.empty()) {
    return nullptr;
  }
  const auto [first, isNew] =
      firsts_.try_emplace(std::move(key), First{std::string(chassis), uri});
  return isNew || first->second.chassis == chassis ? nullptr
                                                   : &first->second.uri;
}

}  // namespace devhealth
