#include "suite/devhealth/health/repeated_parts.h"

#include <boost/json/array.hpp>

#include "suite/devhealth/parts/names/part_class.h"
#include "suite/devhealth/parts/names/same_parts.h"
#include "suite/devhealth/parts/part_list.h"

namespace devhealth {

namespace json = redfish::json;
using redfish::Resource;
using redfish::Uri;

RepeatedParts::RepeatedParts(const redfish::Graph& graph,
                             const redfish::Node& node) {
  if (node.chassis.size() < 2) {
    return;
  }
  SameParts same(node);
  const auto add = [this, &same](const Uri& uri, const json::object& part) {
    if (const Uri* first = same.add(classOf(uri, part).word, uri, part)) {
      firsts_.emplace(uri.identity(), *first);
    }
  };
  for (const Resource* chassis : node.chassis) {
    const std::string folder = chassis->uri.document() + "/";
    for (auto entry = graph.resources().lower_bound(folder);
         entry != graph.resources().end() &&
         entry->first.compare(0, folder.size(), folder) == 0;
         ++entry) {
      const Resource& resource = entry->second;
      add(resource.uri, resource.body);
      for (const auto& member : resource.body) {
        if (!member.value().is_array()) {
          continue;
        }
        const PartList entries = entriesAt(resource, member.key());
        for (const Part& part : entries.parts()) {
          add(part.uri, *part.object);
        }
      }
    }
  }
}

const Uri& RepeatedParts::firstOf(const Uri& uri) const {
  const auto first = firsts_.find(uri.identity());
  return first == firsts_.end() ? uri : first->second;
}

}  // namespace devhealth
