#include "suite/devhealth/parts/rows/chassis_parts.h"

#include <algorithm>
#include <map>
#include <unordered_set>
#include <utility>

#include "suite/devhealth/parts/names/display_name.h"
#include "suite/devhealth/parts/names/same_parts.h"
#include "suite/devhealth/parts/odata_type.h"
#include "suite/devhealth/parts/row_order.h"
#include "suite/redfish/graph/document_path.h"
#include "suite/redfish/graph/status.h"

namespace devhealth {
namespace {

using redfish::Graph;
using redfish::PartSchema;
using redfish::Resource;
using redfish::ResourceState;
using redfish::Uri;

std::string_view lastOf(std::string_view document) {
  return document.substr(document.rfind('/') + 1);
}

bool isPresent(const Part& part) {
  return part.object != nullptr && !redfish::isAbsent(*part.object);
}

bool isRow(const ChassisPart& row) {
  return row.part.object == nullptr || isPresent(row.part);
}

bool anyPresent(const PartList& list) {
  return std::any_of(list.parts().begin(), list.parts().end(), isPresent);
}

std::optional<base::Failure> unreadableFailure(const Resource* resource) {
  if (resource == nullptr || resource->state != ResourceState::kUnreadable) {
    return std::nullopt;
  }
  return failureOf(resource->uri, resource->why());
}

class Collector {
 public:
  Collector(const Graph& graph, const redfish::Node& node,
            const PartSchema& schema, ReadTally& tally)
      : graph_(graph), schema_(schema), tally_(tally), same_(node) {}

  // Asks one place, whatever it is.
  void ask(const Uri& place);

  // Asks a chassis that was read.
  void askChassis(const Resource& chassis);

  bool empty() const { return std::none_of(rows_.begin(), rows_.end(), isRow); }

  // The rows, called so that each can be told from the others.
  std::vector<ChassisPart> take();

 private:
  enum class Model { kSubsystem, kDocument };

  LinkedList fromSubsystem(const Resource& chassis) const;
  LinkedList fromDocument(const Resource& chassis, bool required) const;
  void askEntry(const Uri& place);
  void askMember(const Uri& place);
  void askSinglePart(const Uri& place, std::string_view chassis, Model model);
  bool allows(std::string_view chassis, Model model);
  void commit(const LinkedList& list, Model model);
  void addRow(const Part& part, Model model);

  const Graph& graph_;
  const PartSchema& schema_;
  ReadTally& tally_;
  SameParts same_;
  std::vector<ChassisPart> rows_;  // With absent parts, which have names, too.
  std::unordered_set<std::string> seen_;
  // The model that a chassis was read in: the two list the same parts.
  std::map<std::string, Model, std::less<>> models_;
};

void Collector::ask(const Uri& place) {
  if (!place.fragment().empty()) {
    askEntry(place);
    return;
  }
  const std::string_view document = place.document();
  const Resource* resource = graph_.find(document);
  const OdataType type =
      resource == nullptr ? OdataType{} : odataTypeOf(resource->body);
  const std::string_view folder = lastOf(redfish::parentOf(document));
  if (type.schema == "Chassis" || folder == "Chassis") {
    if (const auto failure = unreadableFailure(resource)) {
      tally_.fail(*failure);
    }
    if (resource != nullptr) {
      askChassis(*resource);
    }
  } else if (type.type == schema_.type || folder == schema_.collection) {
    askMember(place);
  }
}

void Collector::askChassis(const Resource& chassis) {
  const std::string& key = chassis.uri.document();
  const LinkedList members = fromSubsystem(chassis);
  if (anyPresent(members.list)) {
    if (allows(key, Model::kSubsystem)) {
      commit(members, Model::kSubsystem);
    }
    return;
  }
  const bool required = members.list.parts().empty();
  const LinkedList entries = fromDocument(chassis, required);
  if (anyPresent(entries.list)) {
    if (allows(key, Model::kDocument)) {
      commit(entries, Model::kDocument);
    }
    return;
  }
  commit(members, Model::kSubsystem);
  commit(entries, Model::kDocument);
}

LinkedList Collector::fromSubsystem(const Resource& chassis) const {
  LinkedList result;
  const auto link = redfish::linkAt(chassis.body, schema_.subsystem);
  if (!link) {
    result.failure = refusedLinkAt(chassis.body, schema_.subsystem);
    return result;
  }
  const Resource* subsystem = graph_.find(link->document());
  if (subsystem == nullptr) {
    result.failure = failureOf(*link, nullptr);
    return result;
  }
  result.failure = unreadableFailure(subsystem);
  if (result.failure) {
    return result;
  }
  return membersAt(graph_, subsystem->body, schema_.collection);
}

LinkedList Collector::fromDocument(const Resource& chassis,
                                   bool required) const {
  LinkedList result;
  const auto link = redfish::linkAt(chassis.body, schema_.document);
  if (!link) {
    result.failure = refusedLinkAt(chassis.body, schema_.document);
    return result;
  }
  const Resource* document = graph_.find(link->document());
  if (document == nullptr) {
    // It is not asked for where the subsystem has listed parts, absent ones
    // included.
    if (required) {
      result.failure = failureOf(*link, nullptr);
    }
    return result;
  }
  result.failure = unreadableFailure(document);
  result.list = entriesAt(*document, schema_.array);
  return result;
}

void Collector::askEntry(const Uri& place) {
  const std::string folder = "/" + std::string(schema_.array) + "/";
  if (place.fragment().compare(0, folder.size(), folder) != 0) {
    return;
  }
  askSinglePart(place, redfish::parentOf(place.document()), Model::kDocument);
}

void Collector::askMember(const Uri& place) {
  // Chassis / subsystem / collection / part.
  const std::string_view chassis =
      redfish::parentOf(redfish::parentOf(redfish::parentOf(place.document())));
  askSinglePart(place, chassis, Model::kSubsystem);
}

void Collector::askSinglePart(const Uri& place, std::string_view chassis,
                              Model model) {
  if (!allows(chassis, model)) {
    return;
  }
  PartList single;
  single.addLinked(graph_, place);
  for (const Part& part : single.parts()) {
    addRow(part, model);
  }
}

bool Collector::allows(std::string_view chassis, Model model) {
  return models_.try_emplace(std::string(chassis), model).first->second ==
         model;
}

void Collector::commit(const LinkedList& list, Model model) {
  tally_.count(list);
  for (const Part& part : list.list.parts()) {
    addRow(part, model);
  }
}

void Collector::addRow(const Part& part, Model model) {
  if (!seen_.insert(part.uri.identity()).second) {
    return;
  }
  if (part.object == nullptr) {
    tally_.unreadable(part);
  } else {
    tally_.read();
    if (same_.add(schema_.type, part.uri, *part.object) != nullptr) {
      return;
    }
  }
  ChassisPart row;
  row.part = part;
  row.entry = model == Model::kDocument;
  rows_.push_back(std::move(row));
}

std::vector<ChassisPart> Collector::take() {
  std::vector<Candidate> candidates;
  candidates.reserve(rows_.size());
  for (const ChassisPart& row : rows_) {
    candidates.push_back(
        candidateOf(row.part.uri, row.part.object, classOfType(schema_.type)));
  }
  const std::vector<DisplayName> names = displayNames(graph_, candidates);
  std::vector<ChassisPart> present;
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    if (isRow(rows_[i])) {
      rows_[i].name = names[i].text;
      present.push_back(std::move(rows_[i]));
    }
  }
  sortNaturally(present, &ChassisPart::name);
  return present;
}

}  // namespace

std::vector<ChassisPart> chassisParts(const Graph& graph,
                                      const redfish::Node& node,
                                      const std::vector<Uri>& places,
                                      const PartSchema& schema,
                                      ReadTally& tally) {
  if (const auto failure = chassisFailure(graph, node)) {
    tally.fail(*failure);
  }
  countChassis(graph, node, tally);
  countSources(node, schema, tally);
  Collector collector(graph, node, schema, tally);
  for (const Uri& place : places) {
    collector.ask(place);
  }
  if (collector.empty()) {
    for (const Uri& place : redfish::enclosingChassis(graph, node)) {
      const Resource* chassis = graph.find(place.document());
      if (chassis == nullptr) {
        break;
      }
      collector.askChassis(*chassis);
      if (!collector.empty()) {
        break;
      }
    }
  }
  return collector.take();
}

std::optional<base::Failure> chassisFailure(const Graph& graph,
                                            const redfish::Node& node) {
  for (const Uri& link : redfish::linksAt(node.system->body, "Links/Chassis")) {
    auto failure = unreadableFailure(graph.find(link.document()));
    if (failure) {
      return failure;
    }
  }
  if (!node.chassis.empty()) {
    return std::nullopt;
  }
  const RefusedLinks refused =
      refusedLinksAt(node.system->body, "Links/Chassis");
  if (refused.count > 0) {
    return refused.first;
  }
  const Resource* root = redfish::serviceRoot(graph);
  if (root == nullptr) {
    return std::nullopt;
  }
  const LinkedList all = membersAt(graph, root->body, "Chassis");
  if (all.failure) {
    return all.failure;
  }
  for (const Part& part : all.list.parts()) {
    if (part.object == nullptr) {
      return failureOf(part.uri, part.failure);
    }
  }
  return all.refused.count > 0 ? std::optional(all.refused.first)
                               : std::nullopt;
}

void countChassis(const Graph& graph, const redfish::Node& node,
                  ReadTally& tally) {
  for (const Resource* system : node.systems) {
    tally.refused(refusedLinksAt(system->body, "Links/Chassis"));
  }
  const Resource* root = redfish::serviceRoot(graph);
  if (root == nullptr || !node.alone || node.chassisLinked) {
    return;
  }
  const LinkedList all = membersAt(graph, root->body, "Chassis");
  tally.refused(all.refused);
  for (const Part& part : all.list.parts()) {
    if (part.object == nullptr) {
      tally.unreadable(part);
    }
  }
}

void countSources(const redfish::Node& node, const PartSchema& schema,
                  ReadTally& tally) {
  for (const Resource* system : node.systems) {
    tally.refused(refusedLinksAt(system->body, schema.suppliers));
  }
  for (const Resource* chassis : node.chassis) {
    tally.refused(refusedLinksAt(chassis->body, schema.suppliers));
    tally.refused(refusedLinksAt(chassis->body, schema.parts));
  }
}

}  // namespace devhealth
