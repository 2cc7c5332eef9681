#pragma once

#include <boost/json/object.hpp>
#include <cstddef>
#include <string>

namespace bmc {

/// Which part of a collection a request is answered with.
struct Page {
  std::size_t skip = 0;  ///< Members before it.
  std::size_t size = 0;  ///< Members in it at most; 0: all.
};

/// Leaves one page of the "Members" of a collection, with a link to the next
/// page where one follows. What is no collection stays as it is. `again` is
/// the target of the page without its skip, such as
/// "/redfish/v1/Chassis?$expand=.".
void paginate(boost::json::object& collection, const std::string& again,
              const Page& page);

}  // namespace bmc
