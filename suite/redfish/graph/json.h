#pragma once

#include <algorithm>
#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/value.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "suite/base/result.h"
#include "suite/base/time_limit.h"
#include "suite/redfish/graph/reading_budget.h"
#include "suite/redfish/graph/uri.h"

namespace redfish {

namespace json = boost::json;

/// Reads a body as one JSON object, within the limits of json_limits.h and of
/// the budget, if there is one. Strips a byte-order mark; of members with the
/// same name the last one stays; integers stay exact. Keeps bytes in strings
/// that are not UTF-8 (`base::cleanText` replaces them). A failure is
/// `kBadContent` and has only a cause.
base::Result<json::object> parseObject(std::string_view body,
                                       ReadingBudget* budget = nullptr);

/// The same for a document that is not kept, such as an error or a session.
/// Refuses a body of more than 256 KiB.
base::Result<json::object> parseSmallObject(std::string_view body);

/// The member at a path of names such as "Links/Chassis", each step an
/// object; null where a step is missing, null, or no object. The step "*"
/// stands for each name in turn until the rest of the path leads to something:
/// "Oem/*/BayNumber" is the first maker's one.
const json::value* memberAt(const json::object& object, std::string_view path);

/// The object at a path; null where there is none.
const json::object* objectAt(const json::object& object, std::string_view path);

/// The array at a path; null where there is none.
const json::array* arrayAt(const json::object& object, std::string_view path);

/// The string at a path, as it stands; empty where there is none.
std::string_view stringAt(const json::object& object, std::string_view path);

/// The link that a value is: an object with a string "@odata.id" that passes
/// the rules for links. A refused link counts as none.
std::optional<Uri> linkOf(const json::value& value);

/// Whether a value is an object with a string "@odata.id" that is refused.
bool isRefusedLink(const json::value& value);

/// The link at a path of an object.
std::optional<Uri> linkAt(const json::object& object, std::string_view path);

/// All links at a path, which holds an array or a single object, in the order
/// served. Leaves out the first `skipped` entries of an array and those that
/// are no good links. A link may stand twice.
std::vector<Uri> linksAt(const json::object& object, std::string_view path,
                         std::size_t skipped = 0);

/// Whether one of the links at a path passes a test, which takes a `Uri`. Stops
/// at the first one that does.
template <typename Test>
bool anyLinkAt(const json::object& object, std::string_view path,
               const Test& test) {
  const auto passes = [&test](const json::value& entry) {
    base::heedTime();
    const std::optional<Uri> link = linkOf(entry);
    return link && test(*link);
  };
  const json::value* value = memberAt(object, path);
  if (value == nullptr) {
    return false;
  }
  const json::array* array = value->if_array();
  return array == nullptr ? passes(*value)
                          : std::any_of(array->begin(), array->end(), passes);
}

/// The test that every link passes.
inline bool anyLink(const Uri& /*link*/) { return true; }

/// Most links of one array: a longer one makes its document unreadable.
constexpr std::size_t kMaxLinks = 4096;

/// What is wrong with the links anywhere in a document.
struct LinkReport {
  /// The first 8 that break the rules, for messages: clean, cut to 120 bytes.
  std::vector<std::string> refused;
  std::size_t refusedCount = 0;
  /// Name of the first array with more than `kMaxLinks` links, clean; empty
  /// when there is none.
  std::string longList;
};

/// Checks the links of a document at every depth.
LinkReport surveyLinks(const json::object& object);

}  // namespace redfish
