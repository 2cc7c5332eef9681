#include "suite/devhealth/parts/names/sibling_names.h"

#include "suite/devhealth/parts/part_list.h"
#include "suite/redfish/graph/document_path.h"

namespace devhealth {

namespace json = redfish::json;
using redfish::Resource;
using redfish::ResourceState;
using redfish::Uri;

std::string SiblingNames::nameOf(const Uri& uri, const json::object& part) {
  const std::string_view pointer = uri.fragment();
  const std::string_view folder = pointer.empty()
                                      ? redfish::parentOf(uri.document())
                                      : redfish::parentOf(pointer);
  const std::string list = pointer.empty()
                               ? std::string(folder)
                               : uri.document() + '#' + std::string(folder);
  if (named_.emplace(list, true).second) {
    if (pointer.empty()) {
      nameDocuments(folder);
    } else if (!folder.empty()) {
      nameEntries(uri, folder.substr(1));
    }
  }
  const auto name = names_.find(uri.identity());
  if (name != names_.end()) {
    return name->second;
  }
  return displayNames(graph_, {candidateOf(uri, &part, classOf(uri, part))})
      .front()
      .text;
}

// Names what was read directly below a folder.
void SiblingNames::nameDocuments(std::string_view folder) {
  std::vector<Candidate> candidates;
  for (auto entry = graph_.resources().lower_bound(folder);
       entry != graph_.resources().end() &&
       entry->first.compare(0, folder.size(), folder) == 0;
       ++entry) {
    const Resource& resource = entry->second;
    if (resource.state == ResourceState::kRead &&
        redfish::parentOf(entry->first) == folder) {
      candidates.push_back(candidateOf(resource.uri, &resource.body,
                                       classOf(resource.uri, resource.body)));
    }
  }
  keep(candidates);
}

// Names the entries of an array of a document.
void SiblingNames::nameEntries(const Uri& uri, std::string_view array) {
  const Resource* document = graph_.find(uri.document());
  if (document == nullptr) {
    return;
  }
  std::vector<Candidate> candidates;
  const PartList entries = entriesAt(*document, array);
  for (const Part& part : entries.parts()) {
    candidates.push_back(
        candidateOf(part.uri, part.object, classOf(part.uri, *part.object)));
  }
  keep(candidates);
}

void SiblingNames::keep(const std::vector<Candidate>& candidates) {
  const auto names = displayNames(graph_, candidates);
  for (std::size_t i = 0; i < candidates.size(); ++i) {
    names_.emplace(candidates[i].uri.identity(), names[i].text);
  }
}

}  // namespace devhealth
