#include "suite/devhealth/health/repeated_parts.h"

#include <boost/json/array.hpp>
#include <set>

#include "suite/base/ascii.h"
#include "suite/base/time_limit.h"
#include "suite/devhealth/parts/names/part_class.h"
#include "suite/devhealth/parts/names/same_parts.h"
#include "suite/devhealth/parts/part_list.h"

namespace devhealth {

namespace json = redfish::json;
using redfish::Resource;
using redfish::Uri;

namespace {

// The first text behind all those that start with a folder, whose last
// character is a slash.
std::string behind(std::string folder) {
  ++folder.back();
  return folder;
}

// The one of some folders, none inside another, in which a document lies, or
// another folder; null for none.
const std::string* folderAround(const std::set<std::string>& folders,
                                const std::string& document) {
  auto next = folders.upper_bound(document);
  if (next == folders.begin()) {
    return nullptr;
  }
  --next;
  return base::startsWith(document, *next) ? &*next : nullptr;
}

}  // namespace

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
  std::set<std::string> done;  // Folders, none inside another.
  for (const Resource* chassis : node.chassis) {
    const std::string folder = chassis->uri.document() + "/";
    if (folderAround(done, folder) != nullptr) {
      continue;
    }
    const auto& all = graph.resources();
    auto entry = all.lower_bound(folder);
    while (entry != all.end() && base::startsWith(entry->first, folder)) {
      base::heedTime();
      if (const std::string* known = folderAround(done, entry->first)) {
        entry = all.lower_bound(behind(*known));
        continue;
      }
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
      ++entry;
    }
    done.erase(done.lower_bound(folder), done.lower_bound(behind(folder)));
    done.insert(folder);
  }
}

const Uri& RepeatedParts::firstOf(const Uri& uri) const {
  const auto first = firsts_.find(uri.identity());
  return first == firsts_.end() ? uri : first->second;
}

}  // namespace devhealth
