#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
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

  /// Call it when a resource of these kinds came or changed.
  void changed(const KindSet& kinds);

  /// The plan bits (`planBits`) of the selection.
  std::uint32_t bits() const { return bits_; }

 private:
  enum class Question : std::uint8_t {
    kSystemsLink,
    kChassisLink,
    kSystemDeviceExists,
    kChassisDeviceExists,
    kChassisLinksUnasked,
    kChassisMemberExists,
    kChassisMemberRead,
    kFans,
    kPowerSupplies
  };

  Decision belongs(Kind kind, const Resource& resource);
  Decision systemBelongs(const Resource& system);
  Decision chassisBelongs(const Resource& chassis);
  bool mayComeExpanded(const Rule& rule) const;
  Decision walk();
  bool isUnexplained(const Resource& resource) const;

  // One for each Condition.
  Decision meets(Condition condition, const Resource& resource);
  Decision partsUnclear();
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
  bool chassisComing();
  /// Whether a test holds for any system (chassis) of the node.
  template <typename Test>
  bool anySystem(Question question, std::string_view path, Test test);
  template <typename Test>
  bool anyChassis(Question question, std::string_view path, Test test);
  /// Whether the node has fans, or power supplies.
  bool nodeHas(Question parts);
  bool partsDepend();
  bool structureComing() const;
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
  /// The node as it was found last; nullopt: must be found again. May lack the
  /// latest chassis and managers while they come: a decision that needs all of
  /// them waits.
  std::optional<Node> node_;
  std::unordered_set<const Resource*> members_;  ///< Its systems and chassis.
  /// Key of the chassis collection, once known; empty if there is none.
  std::optional<std::string> chassisCollection_;
  std::size_t changes_ = 0;           ///< Chassis and managers since then.
  std::optional<bool> partsUnclear_;  ///< Until a system or chassis changes.
  /// Answers to questions about all systems or chassis of the node, until it
  /// or the graph changes.
  std::map<std::pair<Question, std::string_view>, bool> answers_;
  std::optional<Decision> walk_;  ///< Once it is decided.
};

}  // namespace redfish
