#include "tests/bmc/service/paging.h"

#include <algorithm>
#include <boost/json/array.hpp>
#include <boost/json/value.hpp>

namespace bmc {

namespace json = boost::json;

void paginate(json::object& collection, const std::string& again,
              const Page& page) {
  json::value* value = collection.if_contains("Members");
  if (value == nullptr || !value->is_array()) {
    return;
  }
  json::array& members = value->get_array();

  const std::size_t first = std::min(page.skip, members.size());
  const std::size_t rest = members.size() - first;
  const std::size_t count = page.size == 0 ? rest : std::min(page.size, rest);
  const bool more = count < rest;
  members =
      json::array(members.begin() + first, members.begin() + first + count);
  if (more) {
    const char* join = again.find('?') == std::string::npos ? "?" : "&";
    collection["Members@odata.nextLink"] =
        again + join + "$skip=" + std::to_string(first + count);
  }
}

}  // namespace bmc
