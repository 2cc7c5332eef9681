#include "suite/devhealth/parts/names/display_name.h"

#include <array>
#include <map>
#include <string_view>
#include <utility>

#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/document_path.h"
#include "suite/redfish/graph/status.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using redfish::Graph;
using redfish::Uri;

constexpr std::string_view kLabelPath = "Location/PartLocation/ServiceLabel";

enum Property { kName, kLabel, kLocator, kBay, kPropertyCount };
using Properties = std::array<std::string, kPropertyCount>;

constexpr std::array<Property, kPropertyCount> kByName = {kName, kLabel,
                                                          kLocator, kBay};
constexpr std::array<Property, kPropertyCount> kByPlace = {kLabel, kLocator,
                                                           kName, kBay};

Properties propertiesOf(const Candidate& candidate) {
  Properties properties;
  if (candidate.object == nullptr) {
    return properties;
  }
  const json::object& part = *candidate.object;
  const PartClass& partClass = candidate.partClass;
  properties[kName] = textAt(part, "Name");
  properties[kLabel] = placeText(partClass, candidate.label);
  if (!partClass.locator.empty()) {
    properties[kLocator] =
        placeText(partClass, textAt(part, partClass.locator));
  }
  properties[kBay] = placeText(partClass, textAt(part, "Oem/*/BayNumber"));
  return properties;
}

std::string idOf(const Candidate& candidate) {
  const std::string id =
      firstTextAt(*candidate.object, {"Id", "MemberId", "MemberID"});
  return id.empty() ? plainText(candidate.uri.lastSegment()) : id;
}

// What a part is called that no property of its own tells from the others.
std::string nameWithId(const Candidate& candidate, const std::string& name) {
  std::string id = idOf(candidate);
  if (startsWithClassWord(id)) {
    return id;
  }
  const std::string& first = isName(name) ? name : candidate.partClass.word;
  if (first.empty() || id.empty()) {
    return first + id;
  }
  return first + " " + id;
}

class Names {
 public:
  Names(const std::vector<Candidate>& candidates, NameOrder order)
      : candidates_(candidates),
        order_(order == NameOrder::kNameFirst ? kByName : kByPlace) {
    properties_.reserve(candidates.size());
    for (const Candidate& candidate : candidates) {
      properties_.push_back(propertiesOf(candidate));
      for (std::size_t i = 0; i < kPropertyCount; ++i) {
        ++counts_[i][properties_.back()[i]];
      }
    }
  }

  DisplayName nameOf(std::size_t index) const {
    const Candidate& candidate = candidates_[index];
    if (candidate.object == nullptr) {
      return {plainText(candidate.uri.lastSegment()), false};
    }
    const Properties& properties = properties_[index];
    for (const Property property : order_) {
      const std::string& text = properties[property];
      if (isName(text) && counts_[property].at(text) == 1) {
        return {text, property != kName};
      }
    }
    return {nameWithId(candidate, properties[kName]), false};
  }

 private:
  const std::vector<Candidate>& candidates_;
  const std::array<Property, kPropertyCount>& order_;
  std::vector<Properties> properties_;
  std::array<std::map<std::string, int>, kPropertyCount> counts_;
};

}  // namespace

Candidate candidateOf(const Uri& uri, const json::object* object,
                      PartClass partClass) {
  return {uri, object, std::move(partClass),
          object == nullptr ? std::string() : textAt(*object, kLabelPath)};
}

std::vector<DisplayName> displayNames(const Graph& graph,
                                      const std::vector<Candidate>& candidates,
                                      NameOrder order) {
  const Names names(candidates, order);
  std::vector<DisplayName> result;
  std::map<std::string, int> counts;
  result.reserve(candidates.size());
  for (std::size_t i = 0; i < candidates.size(); ++i) {
    result.push_back(names.nameOf(i));
    // What is absent has no row in which its name would be repeated.
    const json::object* part = candidates[i].object;
    if (part == nullptr || !redfish::isAbsent(*part)) {
      ++counts[result.back().text];
    }
  }
  for (std::size_t i = 0; i < candidates.size(); ++i) {
    if (counts[result[i].text] < 2) {
      continue;
    }
    const std::string holder = holderId(graph, candidates[i].uri);
    if (!holder.empty()) {
      result[i] = {holder + "/" + result[i].text, false};
    }
  }
  return result;
}

std::string holderId(const Graph& graph, const Uri& uri) {
  const std::string_view document = uri.document();
  const std::string_view root = redfish::segmentOf(document, 2);
  const std::string_view segment = redfish::segmentOf(document, 3);
  if ((root != "Chassis" && root != "Systems") || segment.empty()) {
    return {};
  }
  const auto end = static_cast<std::size_t>(segment.data() - document.data()) +
                   segment.size();
  const redfish::Resource* holder = graph.find(document.substr(0, end));
  const std::string id =
      holder == nullptr ? std::string() : textAt(holder->body, "Id");
  return id.empty() ? plainText(segment) : id;
}

}  // namespace devhealth
