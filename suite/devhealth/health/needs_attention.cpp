#include "suite/devhealth/health/needs_attention.h"

#include <algorithm>
#include <array>
#include <boost/json/array.hpp>
#include <string>

#include "suite/base/ascii.h"
#include "suite/devhealth/parts/odata_type.h"
#include "suite/redfish/graph/status.h"

namespace devhealth {
namespace {

namespace json = redfish::json;
using redfish::Health;
using redfish::Uri;
using Use = std::function<void(const Uri&, const json::object&)>;

// Members that hold no parts: links, lists of links, other formats, and the
// Status itself.
constexpr std::array<std::string_view, 6> kNoParts = {
    "Links", "Members", "Actions", "Oem", "Status", "RelatedItem"};

bool holdsParts(std::string_view name) {
  return !base::startsWith(name, "@") &&
         std::find(kNoParts.begin(), kNoParts.end(), name) == kNoParts.end();
}

bool needsAttention(const json::object& part) {
  const json::object* status = redfish::objectAt(part, "Status");
  if (status == nullptr) {
    return false;
  }
  return redfish::arrayAt(*status, "Conditions") != nullptr ||
         redfish::rollup(part, "Status") > Health::kOk ||
         redfish::stringAt(*status, "State") == "Degraded" ||
         part.contains("FailurePredicted");
}

// A name as part of a JSON pointer (RFC 6901).
std::string escaped(std::string_view name) {
  std::string text;
  for (const char c : name) {
    if (c == '~') {
      text += "~0";
    } else if (c == '/') {
      text += "~1";
    } else {
      text += c;
    }
  }
  return text;
}

class AttentionWalk {
 public:
  AttentionWalk(const redfish::Resource& document, const Use& use)
      : document_(document), use_(use) {}

  // Depth is bounded by that of the JSON.
  void visit(const json::object& object) {
    if (needsAttention(object)) {
      if (const auto uri = uriOf()) {
        use_(*uri, object);
      }
    }
    for (const auto& member : object) {
      const std::string_view name(member.key().data(), member.key().size());
      if (holdsParts(name)) {
        enter(escaped(name), member.value());
      }
    }
  }

 private:
  void enter(const std::string& step, const json::value& value) {
    const json::object* object = value.if_object();
    const json::array* array = value.if_array();
    if (object == nullptr && array == nullptr) {
      return;
    }
    const std::size_t length = pointer_.size();
    pointer_ += '/';
    pointer_ += step;
    if (object != nullptr) {
      if (!isOtherResource(*object)) {
        visit(*object);
      }
    } else {
      for (std::size_t index = 0; index < array->size(); ++index) {
        enter(std::to_string(index), (*array)[index]);
      }
    }
    pointer_.resize(length);
  }

  std::optional<Uri> uriOf() const {
    return pointer_.empty()
               ? document_.uri
               : Uri::parse(document_.uri.document() + '#' + pointer_);
  }

  // Whether an object is a resource of its own that came inside this one: a
  // service that is asked plainly does not send it.
  bool isOtherResource(const json::object& object) const {
    if (!object.contains("@odata.type") || !object.contains("Id") ||
        !object.contains("Name")) {
      return false;
    }
    const auto own = Uri::parse(redfish::stringAt(object, "@odata.id"));
    return own && own->document() != document_.uri.document();
  }

  const redfish::Resource& document_;
  const Use& use_;
  std::string pointer_;
};

}  // namespace

void forEachNeedingAttention(const redfish::Resource& document,
                             const Use& use) {
  // Registries are large, and hold texts alone.
  if (odataTypeOf(document.body).schema == "MessageRegistry") {
    return;
  }
  AttentionWalk(document, use).visit(document.body);
}

}  // namespace devhealth
