#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "suite/redfish/crawl/crawl_state.h"
#include "suite/redfish/crawl/knowledge.h"
#include "suite/redfish/crawl/plan.h"
#include "suite/redfish/crawl/selection.h"
#include "suite/redfish/graph/part_models.h"
#include "suite/redfish/graph/topology.h"

namespace redfish {

/// What becomes of a link.
enum class Decision {
  kEnter,  ///< It is followed.
  kSkip,   ///< It is not, and never will be in this crawl.
  kWait    ///< An answer that is still to come decides.
};

/// Which links a crawl follows: the plan's rows held against what is known.
/// Pure: it reads what it was made with and asks for nothing. Knowledge,
/// selection and state have to outlive it and may change between questions.
class LinkPolicy {
 public:
  LinkPolicy(const ServiceKnowledge& knowledge, const Selection& selection,
             const CrawlState& state);

  /// Whether a row is followed from a resource that was read.
  Decision decide(const Rule& rule, const Resource& resource);

  /// To be called when a system, chassis or manager, or a collection of them,
  /// came or changed.
  void structureChanged() { node_.reset(); }

  /// The plan bits (`planBits`) of the selection.
  std::uint32_t bits() const { return bits_; }

 private:
  Decision belongs(Kind kind, const Resource& resource);
  Decision systemBelongs(const Resource& system);
  Decision chassisBelongs(const Resource& chassis);
  bool mayComeExpanded(const Rule& rule) const;
  Decision walk();
  bool isUnexplained(const Resource& resource) const;

  // One for each Condition.
  Decision meets(Condition condition, const Resource& resource);
  Decision partsUnclear() const;
  static Decision noSpeed(const json::object& processor);
  Decision noNewParts(const json::object& chassis,
                      const PartSchema& schema) const;
  Decision afterChassisDevices();
  Decision noSystemDevices();
  Decision noChassisDevices();
  Decision noReadableDevices();
  Decision noChassisAdapters();
  static Decision noControllerArray(const json::object& storage);
  Decision noStorage();

  const Node& node();
  bool chassisComing() const;
  template <typename Test>
  bool anySystem(Test test);
  template <typename Test>
  bool anyChassis(Test test);
  /// Whether the node's systems (chassis) have links at a path.
  bool systemsLink(std::string_view path);
  bool chassisLink(std::string_view path);
  /// Whether the devices that the systems (chassis) link include any that
  /// exists.
  bool systemDeviceExists();
  bool chassisDeviceExists();
  /// Whether the chassis have links at a path that were not asked for.
  bool chassisLinksUnasked(std::string_view path);
  /// Whether the chassis' collections at a path have a member that exists,
  /// or that was read.
  bool chassisMemberExists(std::string_view path);
  bool chassisMemberRead(std::string_view path);
  Decision whenDrained(bool enter) const;

  const ServiceKnowledge& knowledge_;
  const Selection& selection_;
  const CrawlState& state_;
  std::uint32_t bits_;
  bool thorough_;
  std::optional<Node> node_;      ///< Cache; none: to be found again.
  std::optional<Decision> walk_;  ///< Once it is decided.
};

}  // namespace redfish
