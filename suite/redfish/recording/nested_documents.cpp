#include "suite/redfish/recording/nested_documents.h"

#include <boost/json/array.hpp>
#include <boost/json/serialize.hpp>
#include <optional>
#include <string_view>
#include <utility>

#include "suite/redfish/graph/json.h"
#include "suite/redfish/graph/uri.h"

namespace redfish {
namespace {

using Use = std::function<void(const std::string&, const std::string&)>;

constexpr std::string_view kTypeName = "\"@odata.type\"";

// Whether a text can hold a resource beside the one that it is.
bool mayHoldNested(std::string_view body) {
  const std::size_t first = body.find(kTypeName);
  return first != std::string_view::npos &&
         body.find(kTypeName, first + 1) != std::string_view::npos;
}

// The link of an object that is a resource rather than a mere link to one.
std::optional<Uri> resourceIn(const json::value& value) {
  const json::object* object = value.if_object();
  if (object == nullptr || stringAt(*object, "@odata.type").empty()) {
    return std::nullopt;
  }
  std::optional<Uri> link = linkOf(value);
  return link && link->fragment().empty() ? link : std::nullopt;
}

void visit(json::value& value, const std::string& around, const Use& use) {
  const std::optional<Uri> link = resourceIn(value);
  const bool nested = link && link->document() != around;
  const std::string& inside = nested ? link->document() : around;
  if (json::array* array = value.if_array()) {
    for (json::value& entry : *array) {
      visit(entry, inside, use);
    }
  } else if (json::object* object = value.if_object()) {
    for (auto& member : *object) {
      // What makers add in their own format belongs to the resource.
      if (member.key() != "Oem") {
        visit(member.value(), inside, use);
      }
    }
  }
  if (nested) {
    use(link->target(), json::serialize(value));
    json::object reference;
    reference["@odata.id"] = link->target();
    value = std::move(reference);
  }
}

}  // namespace

void forEachNestedDocument(const std::string& body, const Use& use) {
  if (!mayHoldNested(body)) {
    return;
  }
  auto object = parseObject(body);
  if (!object) {
    return;
  }
  json::value whole = std::move(*object);
  const std::optional<Uri> own = linkOf(whole);
  const std::string around = own ? own->document() : std::string();
  for (auto& member : whole.get_object()) {
    if (member.key() != "Oem") {
      visit(member.value(), around, use);
    }
  }
}

}  // namespace redfish
