#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "suite/redfish/graph/graph.h"

namespace redfish {

/// How the chassis of a service hang together with its systems and with one
/// another, told by the links of both sides. Every link is parsed once. Shows
/// the graph as it is when it is asked first; the graph has to outlive it.
class ChassisLinks {
 public:
  /// `members` are those of the service's collection, as far as they were read.
  ChassisLinks(const Graph& graph, std::vector<const Resource*> members);

  const std::vector<const Resource*>& members() const { return members_; }

  /// The document keys of the systems that a chassis names.
  const std::vector<std::string>& systemsOf(const Resource& chassis) const {
    return of(chassis).systems;
  }

  /// Whether one of these was read.
  bool namesReadSystem(const Resource& chassis) const {
    return of(chassis).namesReadSystem;
  }

  /// The chassis that links of either direction tie to a system, as far as they
  /// were read: those that it names, then members that name it. Each once.
  const std::vector<const Resource*>& chassisOf(const Resource& system) const {
    return tiesOf(system).order;
  }

  /// Whether one of these is a chassis.
  bool areTied(const Resource& system, const Resource& chassis) const {
    return tiesOf(system).all.count(&chassis) > 0;
  }

  /// The chassis directly inside a chassis, as far as they were read. One may
  /// come twice.
  std::vector<const Resource*> inside(const Resource& chassis) const;

 private:
  using Chassis = std::vector<const Resource*>;

  /// The chassis that one system is tied to.
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
