#pragma once

#include <boost/json/value.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/bmc/service/tree.h"

namespace bmc {

/// Changes to a JSON document, in this order.
struct JsonEdit {
  /// Put in place of every value that neither is nor leads to a link, so that
  /// every resource can still be reached. Names that begin with "@odata." keep
  /// their values.
  std::optional<boost::json::value> fill;
  std::vector<std::string> remove;  ///< JSON pointers.
  std::vector<std::pair<std::string, boost::json::value>> set;  ///< Likewise.

  bool empty() const { return !fill && remove.empty() && set.empty(); }
};

/// Makes the changes. What a pointer cannot reach stays as it is.
void apply(const JsonEdit& edit, boost::json::value& document);

/// Changes to some resources of a tree.
struct TreeEdit {
  std::string path;     ///< Pattern, as of fnmatch(3).
  bool absent = false;  ///< They do not exist.
  JsonEdit json;
};

/// Makes the changes. A path that is no pattern and does not exist is added.
/// Resources that are no JSON object stay as they are.
void apply(const TreeEdit& edit, Tree& tree);

}  // namespace bmc
