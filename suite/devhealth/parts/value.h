#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "suite/redfish/graph/json.h"

namespace devhealth {

// From JSON values to what the records hold. Services send numbers as texts
// and texts as numbers, null for what they do not know and placeholders for
// what the maker never filled in; each of these is an ordinary case here, and
// none of them costs more than its own value.

/// Longest text that a record or alert carries, in bytes; a longer one is cut
/// at a character and ends in "...". It leaves room for every real value and
/// keeps a hostile one from flooding the console.
inline constexpr std::size_t kMaxTextBytes = 1024;

/// A text made fit for a record: cleaned, cut to kMaxTextBytes; empty when it
/// is a placeholder (`base::isFiller`) such as "N/A".
std::string recordText(std::string_view text);

/// The same, placeholders kept: for texts that a service wrote for people.
std::string plainText(std::string_view text);

/// The text of the value at a path, placeholders kept; empty where there is
/// none.
std::string plainTextAt(const redfish::json::object& object,
                        std::string_view path);

/// The text of a string, or a number as text; empty for any other value.
std::string textOf(const redfish::json::value& value);

/// The text of the value at a path; empty where there is none.
std::string textAt(const redfish::json::object& object, std::string_view path);

/// The first text at the paths that is not empty.
std::string firstTextAt(const redfish::json::object& object,
                        std::initializer_list<std::string_view> paths);

/// A number, or a text that is one as a whole. Returns nullopt for any other
/// value, and for numbers that are not finite or beyond 10^15.
std::optional<double> numberOf(const redfish::json::value& value);

/// The number at a path.
std::optional<double> numberAt(const redfish::json::object& object,
                               std::string_view path);

/// The number at a path, if it is greater than 0.
std::optional<double> positiveAt(const redfish::json::object& object,
                                 std::string_view path);

/// What makers added to a resource in formats of their own: the objects in
/// `Oem`, one for each maker.
std::vector<const redfish::json::object*> makersObjects(
    const redfish::json::object& resource);

/// A number as text, the same in every locale: at most one decimal, and none
/// where it is 0 (2333.0 is "2333").
std::string formatNumber(double number);

/// Number, blank, unit; empty without a number.
std::string quantity(std::optional<double> number, std::string_view unit);

}  // namespace devhealth
