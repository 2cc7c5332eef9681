#include "tests/bmc/service/target.h"

#include <boost/url/parse.hpp>
#include <boost/url/url_view.hpp>

namespace bmc {

std::optional<std::string> Target::parameter(std::string_view name) const {
  for (const auto& [key, value] : query) {
    if (key == name) {
      return value;
    }
  }
  return std::nullopt;
}

std::optional<Target> parseTarget(std::string_view text) {
  const auto parsed =
      boost::urls::parse_origin_form({text.data(), text.size()});
  if (!parsed) {
    return std::nullopt;
  }

  Target target;
  for (const std::string segment : parsed->segments()) {
    if (segment == "..") {
      return std::nullopt;
    }
    if (!segment.empty()) {
      target.path += "/" + segment;
    }
  }
  if (target.path.empty()) {
    target.path = "/";
  }
  for (const boost::urls::param parameter : parsed->params()) {
    target.query.emplace_back(parameter.key, parameter.value);
  }
  return target;
}

}  // namespace bmc
