#include "suite/devhealth/parts/pci/pci_cards.h"

#include <array>
#include <utility>

#include "suite/devhealth/parts/pci/lone_parts.h"
#include "suite/devhealth/parts/pci/pci_devices.h"
#include "suite/devhealth/parts/pci/pci_match.h"
#include "suite/devhealth/parts/row_order.h"
#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/status.h"

namespace devhealth {
namespace {

using redfish::Graph;
using redfish::Node;

bool isThere(const PciPart& part) {
  return part.part.object == nullptr || !redfish::isAbsent(*part.part.object);
}

// Takes the parts that are there out of a list; the absent ones remain.
std::vector<PciPart> takePresent(std::vector<PciPart>& parts) {
  std::vector<PciPart> present;
  std::vector<PciPart> absent;
  for (PciPart& part : parts) {
    (isThere(part) ? present : absent).push_back(std::move(part));
  }
  parts = std::move(absent);
  return present;
}

void fillGaps(PciFields& fields, const PciFields& other) {
  using Field = std::string PciFields::*;
  constexpr std::array<Field, 5> kFields = {
      &PciFields::manufacturer, &PciFields::model, &PciFields::serialNumber,
      &PciFields::partNumber, &PciFields::sku};
  for (const Field field : kFields) {
    if ((fields.*field).empty()) {
      fields.*field = other.*field;
    }
  }
}

class Cards {
 public:
  Cards(const Graph& graph, const Node& node)
      : graph_(graph), slots_(graph, node) {}

  std::vector<PciCard> build(std::vector<PciPart> devices,
                             std::vector<PciPart> lone) {
    const std::vector<PciPart> present = takePresent(devices);
    const std::vector<PciPart> presentLone = takePresent(lone);
    const auto matches = matchDevices(present, presentLone, slots_);
    for (const PciPart& device : present) {
      addCard(device);
    }
    for (std::size_t i = 0; i < presentLone.size(); ++i) {
      for (const std::size_t device : matches[i]) {
        fillGaps(cards_[device].fields, fieldsOf(presentLone[i]));
      }
      if (matches[i].empty()) {
        addCard(presentLone[i]);
      } else {
        cards_[matches[i].front()].also.push_back(presentLone[i]);
      }
    }
    // What is absent is no row, but has a name.
    devices.insert(devices.end(), lone.begin(), lone.end());
    nameAmong(devices);
    sortNaturally(cards_, &PciCard::name);
    return std::move(cards_);
  }

 private:
  void addCard(const PciPart& part) {
    PciCard card;
    card.part = part;
    card.fields = fieldsOf(part);
    cards_.push_back(std::move(card));
  }

  Candidate candidate(const PciPart& part) const {
    Candidate candidate =
        candidateOf(part.part.uri, part.part.object, pciClassOf(part));
    const bool device =
        part.kind == PciKind::kDevice || part.kind == PciKind::kListed;
    if (device && part.part.object != nullptr) {
      candidate.label = slots_.labelOf(part.part.uri, *part.part.object);
    }
    return candidate;
  }

  void nameAmong(const std::vector<PciPart>& absent) {
    std::vector<Candidate> candidates;
    for (const PciCard& card : cards_) {
      candidates.push_back(candidate(card.part));
    }
    for (const PciPart& part : absent) {
      candidates.push_back(candidate(part));
    }
    const auto names = displayNames(graph_, candidates);
    for (std::size_t i = 0; i < cards_.size(); ++i) {
      cards_[i].name = names[i].text;
      cards_[i].slot = candidates[i].label;
      const bool isPlace =
          names[i].place || names[i].text == candidates[i].label;
      if (isPlace && candidates[i].object != nullptr) {
        addContent(cards_[i]);
      }
    }
  }

  // A place alone says nothing of what is in it.
  static void addContent(PciCard& card) {
    const std::string name = textAt(*card.part.part.object, "Name");
    const std::string& content =
        isName(name) && name != card.name ? name : card.fields.model;
    if (!content.empty()) {
      card.name += " " + content;
    }
  }

  const Graph& graph_;
  PciSlots slots_;
  std::vector<PciCard> cards_;
};

}  // namespace

std::vector<PciCard> pciCards(const Graph& graph, const Node& node,
                              ReadTally& tally) {
  std::vector<PciPart> devices = pciDevices(graph, node, tally);
  std::vector<PciPart> lone = loneParts(graph, node, tally);
  return Cards(graph, node).build(std::move(devices), std::move(lone));
}

}  // namespace devhealth
