#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "suite/redfish/graph/graph.h"

namespace redfish {

/// Which chassis of a service belong to which systems, and which chassis are
/// inside which, from the links of both sides. Parses every link once, when it
/// is first needed: later changes of the graph may not show. The graph must
/// outlive it.
class ChassisLinks {
 public:
  /// `members`: the chassis of the service's collection that were read.
  ChassisLinks(const Graph& graph, std::vector<const Resource*> members);

  const std::vector<const Resource*>& members() const { return members_; }

  /// The document keys of the systems that a chassis names.
  const std::vector<std::string>& systemsOf(const Resource& chassis) const {
    return of(chassis).systems;
  }

  /// Whether one of the systems that a chassis names was read.
  bool namesReadSystem(const Resource& chassis) const {
    return of(chassis).namesReadSystem;
  }

  /// The chassis that are linked with a system in either direction and were
  /// read: those that the system names, then the members that name it. Each
  /// stands once.
  const std::vector<const Resource*>& chassisOf(const Resource& system) const {
    return tiesOf(system).order;
  }

  /// Whether `chassis` is one of `chassisOf(system)`.
  bool areTied(const Resource& system, const Resource& chassis) const {
    return tiesOf(system).all.count(&chassis) > 0;
  }

  /// The chassis directly inside a chassis that were read. One may stand twice.
  std::vector<const Resource*> inside(const Resource& chassis) const;

 private:
  using Chassis = std::vector<const Resource*>;

  /// The chassis that one system is linked with.
  struct Ties {
    Chassis order;
    std::unordered_set<const Resource*> all;
  };

  /// What one chassis names.
  struct Named {
    std::vector<std::string> systems;
    bool namesReadSystem = false;
    std::vector<const Resource*> contained;
  };

  const Named& of(const Resource& chassis) const;
  const Ties& tiesOf(const Resource& system) const;

  const Graph& graph_;
  Chassis members_;
  std::unordered_map<std::string, Chassis> naming_;       ///< By system.
  std::unordered_map<std::string, Chassis> containedBy_;  ///< By chassis.
  mutable std::unordered_map<const Resource*, Named> named_;
  mutable std::unordered_map<const Resource*, Ties> ties_;
};

}  // namespace redfish
