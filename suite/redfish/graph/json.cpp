#include "suite/redfish/graph/json.h"

#include <algorithm>
#include <boost/json/array.hpp>
#include <boost/json/parser.hpp>
#include <utility>

#include "suite/base/text.h"
#include "suite/base/time_limit.h"
#include "suite/redfish/graph/json_limits.h"

namespace redfish {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kWhitespace = " \t\r\n";
constexpr std::string_view kLinkName = "@odata.id";
constexpr std::string_view kAnyName = "*";

constexpr std::size_t kQuotedLinkBytes = 120;
constexpr std::size_t kMaxRefusedTold = 8;
constexpr std::size_t kMaxSmallBytes = std::size_t{256} << 10U;

base::Failure badContent(std::string cause) {
  return base::makeFailure(base::FailureKind::kBadContent, std::move(cause));
}

// What a body is that does not start with an object.
std::string notAnObject(std::string_view text) {
  if (text.empty()) {
    return "the body is empty";
  }
  switch (text.front()) {
    case '<':
      return "the body is HTML or XML, not JSON";
    case '[':
      return "the body is a JSON array, not an object";
    case '"':
      return "the body is a JSON string, not an object";
    default:
      break;
  }
  if (text.front() == '-' || (text.front() >= '0' && text.front() <= '9')) {
    return "the body is a number, not a JSON object";
  }
  return "the body is not JSON, it starts with \"" + base::excerpt(text, 20) +
         "\"";
}

// Why the parser stopped at a byte of the body.
std::string parserReason(const boost::system::error_code& code,
                         std::size_t offset, std::size_t size) {
  if (code == json::error::incomplete) {
    return "the JSON is truncated at byte " + std::to_string(size);
  }
  const std::string place = " at byte " + std::to_string(offset);
  if (code == json::error::too_deep) {
    return "the JSON is nested deeper than " + std::to_string(kMaxJsonDepth) +
           " levels" + place;
  }
  return "the JSON is malformed" + place + " (" + code.message() + ")";
}

// A JSON object; `skipped` bytes of the body stand before it.
base::Result<json::object> parseText(std::string_view text,
                                     std::size_t skipped) {
  json::parse_options options;
  options.max_depth = kMaxJsonDepth;
  // One wrong byte in a name must not cost the whole resource: texts are made
  // valid where they are used.
  options.allow_invalid_utf8 = true;
  json::parser parser({}, options);
  boost::system::error_code code;
  const std::size_t parsed = parser.write_some(text.data(), text.size(), code);
  if (code) {
    return badContent(
        parserReason(code, skipped + parsed, skipped + text.size()));
  }
  if (text.find_first_not_of(kWhitespace, parsed) != std::string_view::npos) {
    return badContent("the JSON is followed by something else at byte " +
                      std::to_string(skipped + parsed));
  }
  return std::move(parser.release().as_object());
}

// The text of a reference, an object with a link; null when there is none.
const json::string* linkTextOf(const json::object& object) {
  const json::value* link = object.if_contains(kLinkName);
  return link == nullptr ? nullptr : link->if_string();
}

bool isRefused(const json::string& link) {
  return !Uri::isAllowed({link.data(), link.size()});
}

// What the rest of a path leads to from a value; the value itself where
// nothing is left of the path.
const json::value* valueBelow(const json::value& value, std::string_view rest) {
  if (value.is_null()) {
    return nullptr;
  }
  if (rest.empty()) {
    return &value;
  }
  const json::object* object = value.if_object();
  return object == nullptr ? nullptr : memberAt(*object, rest);
}

// Walks through a document and checks its links.
class LinkSurvey {
 public:
  void visit(const json::object& object) {
    base::heedTime();
    const json::string* text = linkTextOf(object);
    if (text != nullptr && isRefused(*text)) {
      if (report_.refused.size() < kMaxRefusedTold) {
        report_.refused.push_back(
            base::excerpt({text->data(), text->size()}, kQuotedLinkBytes));
      }
      ++report_.refusedCount;
    }
    for (const auto& member : object) {
      visit(member.value(), member.key());
    }
  }

  LinkReport take() { return std::move(report_); }

 private:
  void visit(const json::value& value, std::string_view name) {
    if (const json::object* object = value.if_object()) {
      visit(*object);
    } else if (const json::array* array = value.if_array()) {
      std::size_t links = 0;
      for (const json::value& entry : *array) {
        const json::object* reference = entry.if_object();
        if (reference != nullptr && linkTextOf(*reference) != nullptr) {
          ++links;
        }
        visit(entry, name);
      }
      if (links > kMaxLinks && report_.longList.empty()) {
        report_.longList = base::excerpt(name, kQuotedLinkBytes);
      }
    }
  }

  LinkReport report_;
};

}  // namespace

base::Result<json::object> parseObject(std::string_view body,
                                       ReadingBudget* budget) {
  std::string_view text = body;
  if (text.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
    text.remove_prefix(kByteOrderMark.size());
  }
  text.remove_prefix(
      std::min(text.find_first_not_of(kWhitespace), text.size()));
  if (text.empty() || text.front() != '{') {
    return badContent(notAnObject(text));
  }
  const base::Result<std::size_t> values = countJsonValues(text);
  if (!values) {
    return values.error();
  }
  if (budget != nullptr) {
    if (auto failure = budget->spend(text.size(), *values)) {
      return *std::move(failure);
    }
  }
  return parseText(text, body.size() - text.size());
}

base::Result<json::object> parseSmallObject(std::string_view body) {
  if (body.size() > kMaxSmallBytes) {
    return badContent("the body is larger than " +
                      std::to_string(kMaxSmallBytes >> 10U) + " KiB");
  }
  return parseObject(body);
}

const json::value* memberAt(const json::object& object, std::string_view path) {
  base::heedTime();
  const std::size_t slash = path.find('/');
  const std::string_view name = path.substr(0, slash);
  const std::string_view rest = slash == std::string_view::npos
                                    ? std::string_view()
                                    : path.substr(slash + 1);
  if (name == kAnyName) {
    for (const auto& member : object) {
      if (const json::value* found = valueBelow(member.value(), rest)) {
        return found;
      }
    }
    return nullptr;
  }
  const json::value* value = object.if_contains(name);
  return value == nullptr ? nullptr : valueBelow(*value, rest);
}

const json::object* objectAt(const json::object& object,
                             std::string_view path) {
  const json::value* value = memberAt(object, path);
  return value == nullptr ? nullptr : value->if_object();
}

const json::array* arrayAt(const json::object& object, std::string_view path) {
  const json::value* value = memberAt(object, path);
  return value == nullptr ? nullptr : value->if_array();
}

std::string_view stringAt(const json::object& object, std::string_view path) {
  const json::value* value = memberAt(object, path);
  const json::string* text = value == nullptr ? nullptr : value->if_string();
  return text == nullptr ? std::string_view()
                         : std::string_view(text->data(), text->size());
}

std::optional<Uri> linkOf(const json::value& value) {
  const json::object* object = value.if_object();
  const json::string* text = object == nullptr ? nullptr : linkTextOf(*object);
  if (text == nullptr) {
    return std::nullopt;
  }
  return Uri::parse({text->data(), text->size()});
}

bool isRefusedLink(const json::value& value) {
  const json::object* object = value.if_object();
  const json::string* text = object == nullptr ? nullptr : linkTextOf(*object);
  return text != nullptr && isRefused(*text);
}

LinkReport surveyLinks(const json::object& object) {
  LinkSurvey survey;
  survey.visit(object);
  return survey.take();
}

std::optional<Uri> linkAt(const json::object& object, std::string_view path) {
  const json::value* value = memberAt(object, path);
  return value == nullptr ? std::nullopt : linkOf(*value);
}

std::vector<Uri> linksAt(const json::object& object, std::string_view path,
                         std::size_t skipped) {
  std::vector<Uri> links;
  const json::value* value = memberAt(object, path);
  if (value == nullptr) {
    return links;
  }
  const auto append = [&links](const json::value& entry) {
    if (std::optional<Uri> link = linkOf(entry)) {
      links.push_back(std::move(*link));
    }
  };
  if (const json::array* array = value->if_array()) {
    links.reserve(array->size() - std::min(array->size(), skipped));
    for (std::size_t index = skipped; index < array->size(); ++index) {
      base::heedTime();
      append((*array)[index]);
    }
  } else {
    append(*value);
  }
  return links;
}

}  // namespace redfish
