#pragma once

#include <boost/json/object.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "tests/bmc/service/tree.h"

namespace bmc {

/// What a `$expand` query asks for (DSP0266, "Use of the $expand query
/// parameter").
struct ExpandQuery {
  bool links = false;    ///< References inside Links ("~" and "*").
  bool noLinks = false;  ///< All other references ("." and "*").
  int levels = 1;        ///< How many references deep.
};

/// Reads the value of `$expand`: ".", "~" or "*", then perhaps "($levels=N)".
/// Nothing when it is none of these.
std::optional<ExpandQuery> parseExpand(std::string_view value);

/// Puts resources of the tree in place of the references to them, as far as
/// the query goes. A reference that leads nowhere, into a part of a document
/// or back to a resource that it stands in remains a reference. `path` is the
/// object's own.
void expand(boost::json::object& object, std::string_view path,
            const Tree& tree, const ExpandQuery& query);

}  // namespace bmc
