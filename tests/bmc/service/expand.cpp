#include "tests/bmc/service/expand.h"

#include <algorithm>
#include <boost/json/array.hpp>
#include <boost/json/value.hpp>
#include <vector>

#include "suite/base/ascii.h"
#include "suite/base/numbers.h"

namespace bmc {
namespace {

namespace json = boost::json;

// The link of an object that is nothing but a reference; empty otherwise.
std::string_view referenceOf(const json::object& object) {
  if (object.size() != 1) {
    return {};
  }
  const json::value* link = object.if_contains("@odata.id");
  if (link == nullptr || !link->is_string()) {
    return {};
  }
  return link->get_string();
}

class Expander {
 public:
  Expander(const Tree& tree, const ExpandQuery& query)
      : tree_(tree), query_(query) {}

  void expandResource(json::object& object, std::string_view path, int levels) {
    if (levels == 0) {
      return;
    }
    within_.emplace_back(path);
    walkObject(object, query_.noLinks, levels);
    within_.pop_back();
  }

 private:
  void walkObject(json::object& object, bool wanted, int levels) {
    for (auto& member : object) {
      const bool links = member.key() == "Links";
      walkValue(member.value(), links ? query_.links : wanted, levels);
    }
  }

  void walkValue(json::value& value, bool wanted, int levels) {
    if (json::array* array = value.if_array()) {
      for (json::value& entry : *array) {
        walkValue(entry, wanted, levels);
      }
      return;
    }
    json::object* object = value.if_object();
    if (object == nullptr) {
      return;
    }
    const std::string link(referenceOf(*object));
    if (link.empty()) {
      walkObject(*object, wanted, levels);
    } else if (wanted) {
      replace(*object, link, levels);
    }
  }

  void replace(json::object& object, std::string_view link, int levels) {
    while (link.size() > 1 && link.back() == '/') {
      link.remove_suffix(1);
    }
    const json::object* resource = tree_.object(link);
    const bool circular =
        std::find(within_.begin(), within_.end(), link) != within_.end();
    if (resource == nullptr || circular) {
      return;
    }
    object = *resource;
    expandResource(object, link, levels - 1);
  }

  const Tree& tree_;
  const ExpandQuery& query_;
  std::vector<std::string> within_;  // Resources that enclose this place.
};

}  // namespace

std::optional<ExpandQuery> parseExpand(std::string_view value) {
  if (value.empty()) {
    return std::nullopt;
  }
  ExpandQuery query;
  switch (value.front()) {
    case '.':
      query.noLinks = true;
      break;
    case '~':
      query.links = true;
      break;
    case '*':
      query.links = query.noLinks = true;
      break;
    default:
      return std::nullopt;
  }
  value.remove_prefix(1);
  if (value.empty()) {
    return query;
  }

  constexpr std::string_view kOpen = "($levels=";
  if (!base::startsWith(value, kOpen) || value.back() != ')') {
    return std::nullopt;
  }
  value.remove_prefix(kOpen.size());
  value.remove_suffix(1);
  const auto levels = base::parseNumber<decltype(query.levels)>(value);
  if (!levels || *levels < 1) {
    return std::nullopt;
  }
  query.levels = *levels;
  return query;
}

void expand(json::object& object, std::string_view path, const Tree& tree,
            const ExpandQuery& query) {
  Expander(tree, query).expandResource(object, path, query.levels);
}

}  // namespace bmc
