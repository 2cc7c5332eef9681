#include "check/comparison.h"

#include <cmath>
#include <map>
#include <utility>

#include "check/parts.h"

namespace check {
namespace {

// "16384 MiB" or "1600 W"; halves are rounded.
std::string sizeText(double size, const char* unit) {
  return std::to_string(std::llround(size)) + " " + unit;
}

std::map<std::string, int> countPlaces(const std::vector<Part>& parts) {
  std::map<std::string, int> counts;
  for (const Part& part : parts) {
    ++counts[part.place];
  }
  return counts;
}

// Compares the parts of one kind.
class KindComparison {
 public:
  KindComparison(const PartList& before, const PartList& now,
                 Comparison& result)
      : before_(before),
        result_(result),
        placesBefore_(countPlaces(*before.parts)),
        placesNow_(countPlaces(*now.parts)) {
    for (const Part& part : *now.parts) {
      byId_.insert({part.id, &part});
      byPlace_.insert({part.place, &part});
      if (part.present && !part.serial.empty()) {
        bySerial_.insert({part.serial, &part});
      }
    }
  }

  void run() {
    for (const Part& part : *before_.parts) {
      if (part.present) {
        compareOne(part);
      }
    }
  }

 private:
  using Index = std::map<std::string, const Part*>;

  // The part that is now where another one was; null if there is none.
  const Part* successorOf(const Part& part) const {
    const auto before = placesBefore_.find(part.place);
    const auto now = placesNow_.find(part.place);
    const bool byPlace = !part.place.empty() && before->second == 1 &&
                         (now == placesNow_.end() || now->second == 1);
    if (byPlace) {
      const Part* const found = partAt(byPlace_, part.place);
      if (found != nullptr) {
        return found;
      }
    }
    // A part that could not be read has no name of its own. Where paths are
    // numbers in a list, one that stands elsewhere now may have its path.
    const Part* const found = partAt(byId_, part.id);
    return byPlace && found != nullptr && placesBefore_.count(found->place) != 0
               ? nullptr
               : found;
  }

  static const Part* partAt(const Index& index, const std::string& key) {
    const auto found = index.find(key);
    return found == index.end() || !found->second->present ? nullptr
                                                           : found->second;
  }

  void compareOne(const Part& part) {
    const Part* const now = successorOf(part);
    const auto same =
        part.serial.empty() ? bySerial_.end() : bySerial_.find(part.serial);
    if (same != bySerial_.end() && same->second != now) {
      add(Status::kWarning, "Changed", part,
          "the one with serial number " + part.serial + " is now " +
              name(*same->second));
    } else if (now == nullptr) {
      add(Status::kCritical, "Missing", part, "is missing" + described(part));
    } else {
      compareIdentity(part, *now);
    }
    if (now != nullptr) {
      compareSize(part, *now);
    }
  }

  void compareIdentity(const Part& part, const Part& now) {
    if (!part.serial.empty()) {
      compareText("serial number", part, part.serial, now.serial);
    } else if (!part.model.empty()) {
      compareText("part number or model", part, part.model, now.model);
    }
  }

  void compareText(const std::string& what, const Part& part,
                   const std::string& before, const std::string& now) {
    if (now.empty()) {
      result_.gaps.push_back(name(part) + ": its " + what +
                             " is not known now, it was " + before);
    } else if (now != before) {
      add(Status::kWarning, "Changed", part,
          "is another one: " + what + " " + now + ", it was " + before);
    }
  }

  void compareSize(const Part& part, const Part& now) {
    if (!part.size) {
      return;
    }
    if (!now.size) {
      result_.gaps.push_back(name(part) + ": its size is not known now, it " +
                             "was " + sizeText(*part.size, before_.unit));
    } else if (*now.size < *part.size) {
      add(Status::kCritical, "Smaller", part,
          "has " + sizeText(*now.size, before_.unit) + ", it had " +
              sizeText(*part.size, before_.unit));
    }
  }

  // " (16384 MiB, serial number S1)", or nothing.
  std::string described(const Part& part) const {
    std::string text = part.size ? sizeText(*part.size, before_.unit) : "";
    if (!part.serial.empty()) {
      text += (text.empty() ? "" : ", ");
      text += "serial number " + part.serial;
    }
    return text.empty() ? "" : " (" + text + ")";
  }

  std::string name(const Part& part) const {
    return std::string(before_.kind) + " " +
           (part.place.empty() ? part.id : part.place);
  }

  void add(Status status, const std::string& key, const Part& part,
           const std::string& text) {
    Finding finding;
    finding.status = status;
    finding.category = before_.category;
    finding.messageId = "Baseline." + key;
    finding.origin = part.id;
    finding.text = name(part) + " " + text;
    result_.findings.push_back(std::move(finding));
  }

  const PartList& before_;
  Comparison& result_;
  std::map<std::string, int> placesBefore_;
  std::map<std::string, int> placesNow_;
  Index byId_;
  Index byPlace_;
  Index bySerial_;
};

void compareSystem(const report::System& before, const report::System& now,
                   Comparison& result) {
  if (before.serialNumber.empty() || now.serialNumber == before.serialNumber) {
    return;
  }
  if (now.serialNumber.empty()) {
    result.gaps.push_back(
        "the server: its serial number is not known now, it was " +
        before.serialNumber);
    return;
  }
  Finding finding;
  finding.status = Status::kWarning;
  finding.messageId = "Baseline.Changed";
  finding.text = "the server is another one: serial number " +
                 now.serialNumber + ", it was " + before.serialNumber;
  result.findings.push_back(std::move(finding));
}

}  // namespace

Comparison compare(const report::ServerReport& before,
                   const report::ServerReport& now) {
  Comparison result;
  compareSystem(before.system, now.system, result);
  const std::vector<PartList> listsBefore = partsOf(before);
  const std::vector<PartList> listsNow = partsOf(now);
  for (std::size_t i = 0; i < listsBefore.size(); ++i) {
    if (!listsBefore[i].parts) {
      continue;
    }
    if (!listsNow[i].parts) {
      result.gaps.push_back(std::string(listsBefore[i].kind) +
                            ": the list was not read, so it cannot be "
                            "compared with the baseline");
      continue;
    }
    KindComparison(listsBefore[i], listsNow[i], result).run();
  }
  return result;
}

}  // namespace check
