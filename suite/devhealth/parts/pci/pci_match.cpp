#include "suite/devhealth/parts/pci/pci_match.h"

#include <algorithm>
#include <array>
#include <boost/json/array.hpp>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>

#include "suite/base/ascii.h"
#include "suite/devhealth/parts/value.h"
#include "suite/redfish/graph/document_path.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using redfish::Uri;

constexpr std::string_view kLabel = "Location/PartLocation/ServiceLabel";

// The words by which two lists may call one part.
struct Words {
  PciFields fields;
  std::string id;
  std::string name;   // In small letters; empty where it is no name.
  std::string model;  // The same.
  std::string idWord;
};

// A text by which parts may be told to be one: a name that is not too short to
// stand in others by chance, in small letters; empty for any other.
std::string wordOf(const std::string& text) {
  constexpr std::size_t kShortest = 5;
  if (text.size() < kShortest || !isName(text)) {
    return {};
  }
  return base::lowerCase(text);
}

Words wordsOf(const PciPart& part) {
  Words words;
  if (part.part.object == nullptr) {
    return words;
  }
  const json::object& object = *part.part.object;
  words.fields = fieldsOf(part);
  words.id = textAt(object, "Id");
  words.name = wordOf(textAt(object, "Name"));
  words.model = wordOf(words.fields.model);
  words.idWord = wordOf(words.id);
  return words;
}

bool isInside(const std::string& word, const std::string& text) {
  return !word.empty() && text.find(word) != std::string::npos;
}

// Whether a word of the one stands in the name or model of the other.
bool anyInside(const Words& words, const Words& other) {
  const auto isIn = [&other](const std::string& word) {
    return isInside(word, other.name) || isInside(word, other.model);
  };
  return isIn(words.name) || isIn(words.model) || isIn(words.idWord);
}

// The part of a label behind its last ":" or "=": "Slot=25" is "25".
std::string labelEnd(const std::string& label) {
  return recordText(label.substr(label.find_last_of(":=") + 1));
}

// The objects that hold a part's links and places: itself, and the controllers
// that a network adapter lists.
std::vector<const json::object*> holdersOf(const json::object& part) {
  std::vector<const json::object*> holders{&part};
  const json::array* controllers = redfish::arrayAt(part, "Controllers");
  if (controllers != nullptr) {
    for (const json::value& value : *controllers) {
      if (const json::object* controller = value.if_object()) {
        holders.push_back(controller);
      }
    }
  }
  return holders;
}

// What a part states of its slot, or of itself in place of one.
std::vector<std::string> placesOf(const PciPart& lone) {
  std::vector<std::string> places;
  const json::object& part = *lone.part.object;
  for (const json::object* holder : holdersOf(part)) {
    places.push_back(labelEnd(textAt(*holder, kLabel)));
  }
  if (lone.kind == PciKind::kController) {
    places.push_back(firstTextAt(part, {"MemberId", "MemberID"}));
    places.push_back(textAt(part, "Id"));
    if (lone.storage != nullptr && lone.onlyController) {
      places.push_back(textAt(*lone.storage, "Id"));
    }
  }
  places.erase(
      std::remove_if(places.begin(), places.end(),
                     [](const std::string& text) { return !hasLetter(text); }),
      places.end());
  return places;
}

// How many of some parts have each text as name or model.
using Counts = std::unordered_map<std::string, int>;

void count(const Words& words, Counts& counts) {
  ++counts[words.name];
  if (words.model != words.name) {
    ++counts[words.model];
  }
}

class Matcher {
 public:
  Matcher(const std::vector<PciPart>& devices,
          const std::vector<PciPart>& loneParts, const PciSlots& slots)
      : devices_(devices),
        lone_(loneParts),
        matches_(loneParts.size()),
        taken_(devices.size()) {
    for (std::size_t i = 0; i < devices.size(); ++i) {
      const Part& part = devices[i].part;
      deviceWords_.push_back(wordsOf(devices[i]));
      labels_.push_back(part.object == nullptr
                            ? std::string()
                            : slots.labelOf(part.uri, *part.object));
      byDocument_.emplace(part.uri.document(), i);
      const std::string& serial = deviceWords_[i].fields.serialNumber;
      if (!serial.empty()) {
        bySerial_[serial].push_back(i);
      }
      count(deviceWords_[i], deviceCounts_);
    }
    for (const PciPart& part : loneParts) {
      loneWords_.push_back(wordsOf(part));
      count(loneWords_.back(), loneCounts_);
    }
  }

  std::vector<std::vector<std::size_t>> match() {
    for (const auto step : {&Matcher::byLink, &Matcher::bySerialNumber,
                            &Matcher::byPlace, &Matcher::byName}) {
      for (std::size_t lone = 0; lone < lone_.size(); ++lone) {
        if (matches_[lone].empty() && lone_[lone].part.object != nullptr) {
          (this->*step)(lone);
        }
      }
    }
    matchWhatIsLeft();
    return std::move(matches_);
  }

 private:
  void take(std::size_t lone, std::size_t device) {
    auto& mine = matches_[lone];
    if (std::find(mine.begin(), mine.end(), device) == mine.end()) {
      mine.push_back(device);
      taken_[device] = true;
    }
  }

  void byLink(std::size_t lone) {
    for (const json::object* holder : holdersOf(*lone_[lone].part.object)) {
      for (const std::string_view path :
           {"Links/PCIeDevice", "Links/PCIeDevices", "Links/PCIeFunctions"}) {
        for (const Uri& link : redfish::linksAt(*holder, path)) {
          if (const auto device = deviceAround(link.document())) {
            take(lone, *device);
          }
        }
      }
    }
  }

  // The device that a document is or lies in.
  std::optional<std::size_t> deviceAround(std::string_view document) const {
    while (!document.empty()) {
      const auto found = byDocument_.find(std::string(document));
      if (found != byDocument_.end()) {
        return found->second;
      }
      document = redfish::parentOf(document);
    }
    return std::nullopt;
  }

  void bySerialNumber(std::size_t lone) {
    const PciFields& fields = loneWords_[lone].fields;
    const auto found = bySerial_.find(fields.serialNumber);
    if (fields.serialNumber.empty() || found == bySerial_.end()) {
      return;
    }
    const auto rank = [&](std::size_t device) {
      const std::string& part = deviceWords_[device].fields.partNumber;
      const bool other = part.empty() || part != fields.partNumber;
      return 2 * static_cast<int>(other) + static_cast<int>(taken_[device]);
    };
    take(lone, *std::min_element(found->second.begin(), found->second.end(),
                                 [&rank](std::size_t left, std::size_t right) {
                                   return rank(left) < rank(right);
                                 }));
  }

  // Whether two parts may be one, as far as others and serial numbers tell.
  bool mayBe(std::size_t lone, std::size_t device) const {
    const std::string& mine = loneWords_[lone].fields.serialNumber;
    const std::string& its = deviceWords_[device].fields.serialNumber;
    return !taken_[device] && (mine.empty() || its.empty() || mine == its);
  }

  void byPlace(std::size_t lone) {
    const std::vector<std::string> places = placesOf(lone_[lone]);
    if (places.empty()) {
      return;
    }
    for (std::size_t device = 0; device < devices_.size(); ++device) {
      if (!mayBe(lone, device)) {
        continue;
      }
      for (const std::string& place : places) {
        if (place == deviceWords_[device].id || place == labels_[device]) {
          take(lone, device);
          return;
        }
      }
    }
  }

  // Whether the name or model of two parts is the same text, and no other
  // part's.
  bool alikeAlone(const Words& mine, const Words& its) const {
    const auto isShared = [&](const std::string& text) {
      return !text.empty() && (text == its.name || text == its.model) &&
             loneCounts_.at(text) == 1 && deviceCounts_.at(text) == 1;
    };
    return isShared(mine.name) || isShared(mine.model);
  }

  void byName(std::size_t lone) {
    const Words& mine = loneWords_[lone];
    for (std::size_t device = 0; device < devices_.size(); ++device) {
      const Words& its = deviceWords_[device];
      const bool called = anyInside(mine, its) || anyInside(its, mine);
      if (called && (mayBe(lone, device) || alikeAlone(mine, its))) {
        take(lone, device);
        return;
      }
    }
  }

  void matchWhatIsLeft() {
    struct Left {
      std::vector<std::size_t> adapters;
      std::vector<std::size_t> devices;
    };
    std::map<std::string, Left> makers;
    for (std::size_t lone = 0; lone < lone_.size(); ++lone) {
      if (lone_[lone].kind == PciKind::kAdapter && matches_[lone].empty()) {
        makers[base::lowerCase(loneWords_[lone].fields.manufacturer)]
            .adapters.push_back(lone);
      }
    }
    for (std::size_t device = 0; device < devices_.size(); ++device) {
      if (!taken_[device]) {
        makers[base::lowerCase(deviceWords_[device].fields.manufacturer)]
            .devices.push_back(device);
      }
    }
    for (const auto& [maker, left] : makers) {
      if (!maker.empty() && left.adapters.size() == 1 &&
          left.devices.size() == 1 &&
          mayBe(left.adapters.front(), left.devices.front())) {
        take(left.adapters.front(), left.devices.front());
      }
    }
  }

  const std::vector<PciPart>& devices_;
  const std::vector<PciPart>& lone_;
  std::vector<std::vector<std::size_t>> matches_;  // By lone part.
  std::vector<bool> taken_;                        // By device.
  std::vector<Words> deviceWords_;
  std::vector<Words> loneWords_;
  std::vector<std::string> labels_;
  std::unordered_map<std::string, std::size_t> byDocument_;
  std::unordered_map<std::string, std::vector<std::size_t>> bySerial_;
  Counts deviceCounts_;
  Counts loneCounts_;
};

}  // namespace

std::vector<std::vector<std::size_t>> matchDevices(
    const std::vector<PciPart>& devices, const std::vector<PciPart>& loneParts,
    const PciSlots& slots) {
  return Matcher(devices, loneParts, slots).match();
}

}  // namespace devhealth
