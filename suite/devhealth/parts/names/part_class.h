#pragma once

#include <string>
#include <string_view>

#include "suite/redfish/graph/json.h"
#include "suite/redfish/graph/uri.h"

namespace devhealth {

/// What parts of one kind are called when nothing better is known, and where
/// such a part states its place.
struct PartClass {
  std::string word;          ///< "Fan"; empty for a part of no known kind.
  std::string_view locator;  ///< Path of its own locator; empty: it has none.
};

/// The class of a part: by its type ("@odata.type"); without a type by the
/// array or collection that its link names. The class of an unknown type has
/// the type as its word.
PartClass classOf(const redfish::Uri& uri, const redfish::json::object& part);

/// The class of parts of a type such as "Fan" (DSP0268).
PartClass classOfType(std::string_view type);

/// Whether a text tells one part from another: it holds a letter, and is more
/// than the word for a class ("CPU", "Fan", "KestwynPowerSupply"). The text
/// is to be clean, placeholders taken out (`recordText`).
bool isName(std::string_view text);

/// Whether a part has a name, a model, a serial number or a part number. An
/// empty bay has none.
bool hasIdentity(const redfish::json::object& part);

/// Whether a text holds a letter.
bool hasLetter(std::string_view text);

/// Whether an identifier starts with the word for a class, blanks aside:
/// "CPU_0", "PowerSupply0".
bool startsWithClassWord(std::string_view id);

/// A name behind the word for its class, unless it holds that word already,
/// blanks and letter case aside: "Drive 3", "Physical Disk 0:1:2".
std::string withClassWord(const PartClass& partClass, const std::string& name);

/// A place that is a number alone behind the word for its class: "Fan 3" for
/// "3". Any other text stays.
std::string placeText(const PartClass& partClass, std::string place);

}  // namespace devhealth
