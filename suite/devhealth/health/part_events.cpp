#include "suite/devhealth/health/part_events.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <utility>

#include "suite/base/time_limit.h"
#include "suite/devhealth/health/component.h"
#include "suite/devhealth/health/health_walk.h"
#include "suite/devhealth/health/repeated_parts.h"
#include "suite/devhealth/parts/rows/part_names.h"
#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/document_path.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using redfish::Graph;
using redfish::Health;
using redfish::Node;
using redfish::Resource;
using redfish::Uri;

// What a component is called. The parts of a system that stand for all of a
// kind have no names.
std::string nameOf(const Component& component, PartNames& names) {
  const std::string& place = component.uri.fragment();
  if (place == "/ProcessorSummary") {
    return "Processors";
  }
  if (place == "/MemorySummary") {
    return "Memory";
  }
  return names.nameOf(component.uri, *component.part);
}

// Lets every part stand once: for the parts that are listed again under
// another chassis the first one states the worst of all.
std::vector<Component> eachOnce(const Graph& graph, const Node& node,
                                std::vector<Component> components) {
  if (components.empty()) {
    return components;
  }
  const RepeatedParts repeated(graph, node);
  std::map<std::string, std::size_t> places;
  std::vector<Component> once;
  for (Component& component : components) {
    const Uri& first = repeated.firstOf(component.uri);
    const auto [place, isNew] =
        places.try_emplace(first.identity(), once.size());
    if (!isNew) {
      Component& kept = once[place->second];
      kept.repeated.push_back(component.uri);
      if (component.statement.severity > kept.statement.severity) {
        kept.part = component.part;
        kept.statement = component.statement;
      }
      continue;
    }
    if (first.identity() != component.uri.identity()) {
      component.repeated.push_back(component.uri);
      component.uri = first;
      component.own = first;
    }
    once.push_back(std::move(component));
  }
  return once;
}

class Teller {
 public:
  Teller(const Graph& graph, const Node& node, FoundSeverities& found,
         Health worst)
      : graph_(graph),
        node_(node),
        found_(found),
        worst_(worst),
        names_(graph, node),
        lost_(graph) {}

  void tellComponents(const std::vector<Component>& components) {
    for (const Component& component : components) {
      if (isExplained(component)) {
        continue;
      }
      if (component.quiet && !lost_.isBeside(component.uri)) {
        quiet_[component.statement.severity].emplace(component.uri.document(),
                                                     component);
        quietFound_.add(component.uri, component.statement.severity);
      } else {
        tell(component);
      }
    }
  }

  void tellHolders() {
    for (const Resource* system : node_.systems) {
      tellHolder(*system, worst_, "");
    }
    std::set<std::string> told;
    for (const Resource* chassis : node_.chassis) {
      // Two documents of one chassis have one Id.
      const std::string id = textAt(chassis->body, "Id");
      if (told.count(id) > 0) {
        continue;
      }
      const std::string& key = chassis->uri.document();
      if (tellHolder(*chassis, std::max(worst_, found_.worstWithin(key)),
                     key) &&
          !id.empty()) {
        told.insert(id);
      }
    }
    for (const Resource* manager : node_.managers) {
      const Statement statement = statementOfHolder(manager->body);
      if (statement.severity >= Health::kWarning &&
          found_.worstWithin(manager->uri.document()) < statement.severity) {
        add(manager->uri, manager->body, statement,
            names_.nameOf(manager->uri, manager->body));
      }
    }
  }

  PartEvents take() { return std::move(result_); }

 private:
  using QuietParts = std::multimap<std::string, Component>;  // By document.

  bool isExplained(const Component& component) {
    const Health severity = component.statement.severity;
    if (found_.worstWithin(component.uri.identity()) >= severity ||
        found_.worstWithin(component.own.identity()) >= severity) {
      return true;
    }
    if (!component.aggregate) {
      return false;
    }
    if (quietFound_.worstWithin(component.uri.identity()) >= severity) {
      return true;
    }
    const auto parts = partsElsewhere(graph_, component);
    return std::any_of(parts.begin(), parts.end(), [&](const Uri& part) {
      return std::max(found_.worstWithin(part.identity()),
                      quietFound_.worstWithin(part.identity())) >= severity;
    });
  }

  // Adds the event of a system or chassis, which holds what lies below
  // `holder`. Returns false if it needs none.
  bool tellHolder(const Resource& resource, Health explained,
                  const std::string& holder) {
    const Statement statement = statementOfHolder(resource.body);
    if (statement.severity < Health::kWarning ||
        explained >= statement.severity) {
      return false;
    }
    if (!std::exchange(skippedAdded_, true)) {
      addSkippedOfNode(graph_, node_, result_.unexplained);
    }
    if (!tellQuiet(holder, statement.severity)) {
      add(resource.uri, resource.body, statement,
          names_.nameOf(resource.uri, resource.body));
    }
    return true;
  }

  // Adds the events of the quiet parts that explain a severity. Returns false
  // if there are none.
  bool tellQuiet(const std::string& holder, Health severity) {
    bool told = false;
    for (auto parts = quiet_.lower_bound(severity); parts != quiet_.end();
         ++parts) {
      QuietParts& all = parts->second;
      if (holder.empty()) {
        told = tellAll(all, all.begin(), all.end()) || told;
        continue;
      }
      const auto own = all.equal_range(holder);
      told = tellAll(all, own.first, own.second) || told;
      // Below its path, whose slash is followed by '0'.
      told = tellAll(all, all.lower_bound(holder + '/'),
                     all.lower_bound(holder + '0')) ||
             told;
    }
    return told;
  }

  // Tells of some quiet parts and takes them out; false if there are none.
  bool tellAll(QuietParts& all, QuietParts::iterator from,
               QuietParts::iterator to) {
    if (from == to) {
      return false;
    }
    for (auto component = from; component != to; ++component) {
      base::heedTime();
      tell(component->second);
    }
    all.erase(from, to);
    return true;
  }

  void tell(const Component& component) {
    add(component.uri, *component.part, component.statement,
        nameOf(component, names_));
    found_.add(component.uri, component.statement.severity);
    for (const Uri& place : component.repeated) {
      found_.add(place, component.statement.severity);
    }
    worst_ = std::max(worst_, component.statement.severity);
  }

  void add(const Uri& uri, const json::object& part, const Statement& statement,
           const std::string& name) {
    result_.events.push_back(healthEvent(uri, part, statement, name));
  }

  const Graph& graph_;
  const Node& node_;
  FoundSeverities& found_;
  Health worst_;
  PartNames names_;
  LostRedundancy lost_;
  std::map<Health, QuietParts> quiet_;  // By severity.
  FoundSeverities quietFound_;
  bool skippedAdded_ = false;
  PartEvents result_;
};

}  // namespace

PartEvents partEvents(const Graph& graph, const Node& node,
                      const NodeScope& scope, bool holders,
                      FoundSeverities& found, Health worst) {
  Teller teller(graph, node, found, worst);
  teller.tellComponents(
      eachOnce(graph, node, troubledComponents(graph, node, scope)));
  if (holders) {
    teller.tellHolders();
  }
  return teller.take();
}

}  // namespace devhealth
