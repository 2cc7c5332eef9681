#include "tests/bmc/faults/json_edit_reader.h"

#include <boost/json/object.hpp>
#include <boost/json/string.hpp>
#include <string>

namespace bmc {
namespace {

namespace json = boost::json;

// A value, in which {"$text": T, "$times": N} stands for a long text.
json::value generated(const json::value& value, const std::string& where,
                      std::string& error) {
  const json::object* object = value.if_object();
  if (object == nullptr || !object->contains("$text")) {
    return value;
  }
  ObjectReader reader(value, where, error);
  const std::string text = reader.text("$text").value_or("");
  const std::uint64_t times = reader.number("$times").value_or(1);
  reader.finish();
  json::string whole;
  for (std::uint64_t i = 0; i < times; ++i) {
    whole.append(text);
  }
  return whole;
}

}  // namespace

JsonEdit readJsonEdit(ObjectReader& reader) {
  JsonEdit edit;
  if (const json::value* filler = reader.any("fill")) {
    edit.fill = generated(*filler, reader.place("fill"), reader.error());
  }
  reader.each("remove", [&](const json::value& entry, const std::string&) {
    if (const json::string* pointer = entry.if_string()) {
      edit.remove.emplace_back(*pointer);
    } else {
      reader.complain("remove", "must hold JSON pointers");
    }
  });
  if (const json::object* values = reader.object("set")) {
    for (const auto& member : *values) {
      edit.set.emplace_back(
          member.key(),
          generated(member.value(), reader.place("set"), reader.error()));
    }
  }
  return edit;
}

}  // namespace bmc
