#include "tests/bmc/faults/json_pointer.h"

#include <algorithm>
#include <boost/algorithm/string/replace.hpp>
#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "suite/base/numbers.h"

namespace bmc {
namespace {

namespace json = boost::json;

// The names of a pointer; nothing when it is none, or leads to the root.
std::optional<std::vector<std::string>> stepsOf(std::string_view pointer) {
  if (pointer.empty() || pointer.front() != '/') {
    return std::nullopt;
  }
  std::vector<std::string> steps;
  while (!pointer.empty()) {
    pointer.remove_prefix(1);
    const std::size_t end = std::min(pointer.find('/'), pointer.size());
    std::string step(pointer.substr(0, end));
    boost::algorithm::replace_all(step, "~1", "/");
    boost::algorithm::replace_all(step, "~0", "~");
    steps.push_back(std::move(step));
    pointer.remove_prefix(end);
  }
  return steps;
}

std::optional<std::size_t> indexOf(const std::string& step,
                                   const json::array& array) {
  const auto index = base::parseNumber<std::size_t>(step);
  return index && *index < array.size() ? index : std::nullopt;
}

// The place that a step leads to; null when an array has none.
json::value* enter(json::value& holder, const std::string& step) {
  if (json::array* array = holder.if_array()) {
    if (step == "-") {
      return &array->emplace_back(nullptr);
    }
    const auto index = indexOf(step, *array);
    return index ? &(*array)[*index] : nullptr;
  }
  if (!holder.is_object()) {
    holder = json::object();
  }
  return &holder.get_object()[step];
}

// The place that a step leads to; null when it is not there.
json::value* find(json::value& holder, const std::string& step) {
  if (json::object* object = holder.if_object()) {
    return object->if_contains(step);
  }
  json::array* array = holder.if_array();
  const auto index = array == nullptr ? std::nullopt : indexOf(step, *array);
  return index ? &(*array)[*index] : nullptr;
}

bool erase(json::value& holder, const std::string& step) {
  if (json::object* object = holder.if_object()) {
    const auto found = object->find(step);
    if (found == object->end()) {
      return false;
    }
    object->stable_erase(found);
    return true;
  }
  json::array* array = holder.if_array();
  const auto index = array == nullptr ? std::nullopt : indexOf(step, *array);
  if (!index) {
    return false;
  }
  array->erase(array->begin() + *index);
  return true;
}

}  // namespace

bool setAt(json::value& root, std::string_view pointer,
           const json::value& value) {
  const auto steps = stepsOf(pointer);
  if (!steps) {
    return false;
  }
  json::value* place = &root;
  for (const std::string& step : *steps) {
    place = enter(*place, step);
    if (place == nullptr) {
      return false;
    }
  }
  *place = value;
  return true;
}

bool removeAt(json::value& root, std::string_view pointer) {
  const auto steps = stepsOf(pointer);
  if (!steps) {
    return false;
  }
  json::value* holder = &root;
  for (std::size_t i = 0; i + 1 < steps->size(); ++i) {
    holder = find(*holder, (*steps)[i]);
    if (holder == nullptr) {
      return false;
    }
  }
  return erase(*holder, steps->back());
}

}  // namespace bmc
