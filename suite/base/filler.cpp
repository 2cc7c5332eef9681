#include "suite/base/filler.h"

#include <algorithm>
#include <array>
#include <string>

#include "suite/base/ascii.h"

namespace base {
namespace {

// What firmware and services write for "no value", seen on real machines.
constexpr std::array<std::string_view, 15> kWords = {"N/A",
                                                     "NA",
                                                     "null",
                                                     "nil",
                                                     "None",
                                                     "Unknown",
                                                     "Undefined",
                                                     "Empty",
                                                     "Not Specified",
                                                     "Not Available",
                                                     "Not Set",
                                                     "Not Provided",
                                                     "NotProvided",
                                                     "Default string",
                                                     "To be filled by O.E.M."};

// Names of fields, of letters alone.
constexpr std::array<std::string_view, 23> kFields = {
    "serial",           "serialnumber",   "serialnum",
    "serialno",         "sernum",         "serno",
    "partnumber",       "partnum",        "partno",
    "modulepartnumber", "manufacturer",   "assettag",
    "assettagnum",      "assettagnumber", "sku",
    "skunumber",        "skunum",         "productname",
    "productnumber",    "model",          "modelname",
    "modelnumber",      "version"};

// Fields whose names, with a number behind, also are what a person may call a
// thing ("Model 800").
constexpr std::array<std::string_view, 2> kOrdinaryWords = {"model", "version"};

// What may stand before the name of a field: "System Serial Number",
// "Type1Sku0", "Array1_PartNumber0".
constexpr std::array<std::string_view, 9> kOwners = {
    "type",      "array",   "a",         "system",     "chassis",
    "baseboard", "product", "processor", "powersupply"};

template <std::size_t Size>
bool holds(const std::array<std::string_view, Size>& words,
           std::string_view text) {
  return std::find(words.begin(), words.end(), text) != words.end();
}

bool isWord(std::string_view text) {
  return std::any_of(
      kWords.begin(), kWords.end(),
      [text](std::string_view word) { return equalIgnoringCase(text, word); });
}

bool isOneCharacter(std::string_view text) {
  constexpr std::size_t kRepeats = 3;
  const bool same = !text.empty() && text.find_first_not_of(text.front()) ==
                                         std::string_view::npos;
  return same && (text.size() >= kRepeats || text.front() == '.');
}

bool isZeroNumber(std::string_view text) {
  return text.size() > 2 && startsIgnoringCase(text, "0x") &&
         text.find_first_not_of('0', 2) == std::string_view::npos;
}

// Whether a text is the name of a field, blanks, hyphens, underscores and
// digits aside.
bool isFieldName(std::string_view text) {
  std::string letters;
  bool numbered = false;
  for (const char c : text) {
    if (isDigit(c)) {
      numbered = true;
    } else if (isLetter(c)) {
      letters += lower(c);
    } else if (c != ' ' && c != '_' && c != '-') {
      return false;
    }
  }
  if (holds(kFields, letters)) {
    return !numbered || !holds(kOrdinaryWords, letters);
  }
  return std::any_of(kOwners.begin(), kOwners.end(),
                     [&letters](std::string_view owner) {
                       const std::string_view name = letters;
                       return startsWith(name, owner) &&
                              holds(kFields, name.substr(owner.size()));
                     });
}

}  // namespace

bool isFiller(std::string_view text) {
  return isWord(text) || isOneCharacter(text) || isZeroNumber(text) ||
         startsWith(text, "0123456789") || startsWith(text, "123456789") ||
         isFieldName(text);
}

}  // namespace base
