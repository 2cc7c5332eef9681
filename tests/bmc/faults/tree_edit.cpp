#include "tests/bmc/faults/tree_edit.h"

#include <fnmatch.h>

#include <algorithm>
#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <string_view>

#include "tests/bmc/faults/json_pointer.h"

namespace bmc {
namespace {

namespace json = boost::json;

bool leadsToLink(const json::value& value) {
  if (const json::array* array = value.if_array()) {
    return std::any_of(array->begin(), array->end(), leadsToLink);
  }
  const json::object* object = value.if_object();
  if (object == nullptr) {
    return false;
  }
  return std::any_of(object->begin(), object->end(), [](const auto& member) {
    return member.key() == "@odata.id" || leadsToLink(member.value());
  });
}

void fill(json::value& value, const json::value& filler) {
  if (!leadsToLink(value)) {
    value = filler;
  } else if (json::array* array = value.if_array()) {
    for (json::value& entry : *array) {
      fill(entry, filler);
    }
  } else {
    for (auto& member : value.get_object()) {
      if (!member.key().starts_with("@odata.")) {
        fill(member.value(), filler);
      }
    }
  }
}

bool isPattern(const std::string& path) {
  return path.find_first_of("*?[") != std::string::npos;
}

void applyToOne(const TreeEdit& edit, const std::string& path, Tree& tree) {
  if (edit.absent) {
    tree.remove(path);
    return;
  }
  const json::object* object = tree.object(path);
  if (object == nullptr) {
    if (tree.find(path) != nullptr) {
      return;
    }
    tree.replace(path, json::object{{"@odata.id", path}});
    object = tree.object(path);
  }
  json::value document(*object);
  apply(edit.json, document);
  if (document.is_object()) {
    tree.replace(path, document.get_object());
  }
}

}  // namespace

void apply(const JsonEdit& edit, json::value& document) {
  if (edit.fill && document.is_object()) {
    for (auto& member : document.get_object()) {
      if (!member.key().starts_with("@odata.")) {
        fill(member.value(), *edit.fill);
      }
    }
  }
  // A pointer that leads nowhere is no error: a pattern may name resources
  // that lack what others have.
  for (const std::string& pointer : edit.remove) {
    static_cast<void>(removeAt(document, pointer));
  }
  for (const auto& [pointer, value] : edit.set) {
    static_cast<void>(setAt(document, pointer, value));
  }
}

void apply(const TreeEdit& edit, Tree& tree) {
  if (!isPattern(edit.path)) {
    applyToOne(edit, edit.path, tree);
    return;
  }
  for (const std::string& path : tree.paths()) {
    if (fnmatch(edit.path.c_str(), path.c_str(), 0) == 0) {
      applyToOne(edit, path, tree);
    }
  }
}

}  // namespace bmc
