#include "tests/bmc/faults/object_reader.h"

#include <algorithm>
#include <utility>

namespace bmc {

namespace json = boost::json;

ObjectReader::ObjectReader(const json::value& value, std::string where,
                           std::string& error)
    : object_(value.if_object()), where_(std::move(where)), error_(error) {
  if (object_ == nullptr) {
    object_ = &empty_;
    complain("", "must be an object");
  }
}

const json::value* ObjectReader::any(const char* name) {
  known_.insert(name);
  return object_->if_contains(name);
}

std::optional<std::string> ObjectReader::text(const char* name) {
  const json::value* value = any(name);
  if (value == nullptr) {
    return std::nullopt;
  }
  if (!value->is_string()) {
    complain(name, "must be a text");
    return std::nullopt;
  }
  return std::string(value->get_string());
}

std::optional<std::uint64_t> ObjectReader::number(const char* name) {
  const json::value* value = any(name);
  if (value == nullptr) {
    return std::nullopt;
  }
  json::error_code error;
  const auto number = value->to_number<std::uint64_t>(error);
  if (error) {
    complain(name, "must be a whole number");
    return std::nullopt;
  }
  return number;
}

bool ObjectReader::flag(const char* name) {
  const json::value* value = any(name);
  if (value == nullptr) {
    return false;
  }
  if (!value->is_bool()) {
    complain(name, "must be true or false");
  }
  return value->is_bool() && value->get_bool();
}

NumberRange ObjectReader::range(const char* name) {
  const json::value* value = any(name);
  if (value == nullptr) {
    return {};
  }
  const json::string* text = value->if_string();
  const auto range =
      text == nullptr ? std::nullopt : parseRange({text->data(), text->size()});
  if (!range) {
    complain(name, R"(must be like "3", "3-5" or "3-")");
  }
  return range.value_or(NumberRange{});
}

const json::object* ObjectReader::object(const char* name) {
  const json::value* value = any(name);
  if (value == nullptr) {
    return nullptr;
  }
  if (!value->is_object()) {
    complain(name, "must be an object");
  }
  return value->if_object();
}

const json::array* ObjectReader::array(const char* name) {
  const json::value* value = any(name);
  if (value == nullptr) {
    return nullptr;
  }
  if (!value->is_array()) {
    complain(name, "must be an array");
  }
  return value->if_array();
}

std::optional<std::size_t> ObjectReader::word(
    const char* name, const std::vector<std::string>& words) {
  const auto given = text(name);
  if (!given) {
    return std::nullopt;
  }
  const auto found = std::find(words.begin(), words.end(), *given);
  if (found == words.end()) {
    std::string list;
    for (const std::string& word : words) {
      list += (list.empty() ? "" : ", ") + word;
    }
    complain(name, "must be one of " + list);
    return std::nullopt;
  }
  return static_cast<std::size_t>(found - words.begin());
}

void ObjectReader::each(
    const char* name,
    const std::function<void(const json::value& entry,
                             const std::string& place)>& take) {
  const json::array* entries = array(name);
  if (entries == nullptr) {
    return;
  }
  for (std::size_t i = 0; i < entries->size(); ++i) {
    take((*entries)[i], place(name) + "/" + std::to_string(i));
  }
}

std::string ObjectReader::place(const char* name) const {
  return where_.empty() ? name : where_ + "/" + name;
}

void ObjectReader::finish() {
  for (const auto& member : *object_) {
    const std::string name(member.key());
    if (known_.count(name) == 0) {
      complain(name.c_str(), "is unknown");
    }
  }
}

void ObjectReader::complain(const char* name, const std::string& what) {
  if (error_.empty()) {
    error_ = place(name) + " " + what;
  }
}

}  // namespace bmc
