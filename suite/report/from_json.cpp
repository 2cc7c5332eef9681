#include <boost/json/parse.hpp>
#include <type_traits>
#include <utility>

#include "suite/report/fields.h"
#include "suite/report/json.h"
#include "suite/report/words.h"

namespace report {
namespace {

namespace json = boost::json;

// Fills structures from values. Remembers the first thing that is wrong, and
// the way to it.
class Reader {
 public:
  const std::string& error() const { return error_; }

  void read(const json::value& from, std::string& value) {
    if (from.is_null()) {
      value.clear();
    } else if (const json::string* text = from.if_string()) {
      value.assign(text->data(), text->size());
    } else {
      fail("is no text");
    }
  }

  void read(const json::value& from, std::int64_t& value) {
    readNumber(from, value);
  }
  void read(const json::value& from, int& value) { readNumber(from, value); }

  void read(const json::value& from, double& value) {
    boost::system::error_code failed;
    const double number = from.to_number<double>(failed);
    if (failed) {
      fail("is no number");
    } else {
      value = number;
    }
  }

  void read(const json::value& from,
            std::array<Health, kCategories>& categories) {
    const json::object* object = objectOf(from);
    for (std::size_t i = 0; object != nullptr && i < kCategories; ++i) {
      readMember(*object, kCategoryWords[i], categories[i]);
    }
  }

  template <typename Value>
  void read(const json::value& from, std::optional<Value>& value) {
    if (from.is_null()) {
      value.reset();
    } else {
      read(from, value.emplace());
    }
  }

  template <typename Element>
  void read(const json::value& from, std::vector<Element>& list) {
    const json::array* array = from.if_array();
    if (array == nullptr) {
      fail("is no list");
      return;
    }
    list.clear();
    for (const json::value& element : *array) {
      read(element, list.emplace_back());
    }
  }

  template <typename Value>
  auto read(const json::value& from, Value& value)
      -> std::enable_if_t<std::is_enum_v<Value>> {
    const json::string* text = from.if_string();
    const auto known = text == nullptr ? std::nullopt : fromWord<Value>(*text);
    if (text == nullptr) {
      fail("is no text");
    } else {
      // A later version may know more words.
      value = known.value_or(Value());
    }
  }

  template <typename Value>
  auto read(const json::value& from, Value& value)
      -> std::enable_if_t<std::is_class_v<Value>> {
    const json::object* object = objectOf(from);
    if (object == nullptr) {
      return;
    }
    forEachField(value, [&](std::string_view name, auto& member) {
      readMember(*object, name, member);
    });
  }

 private:
  template <typename Number>
  void readNumber(const json::value& from, Number& value) {
    boost::system::error_code failed;
    const auto number = from.to_number<Number>(failed);
    if (failed) {
      fail("is no whole number in range");
    } else {
      value = number;
    }
  }

  template <typename Member>
  void readMember(const json::object& object, std::string_view name,
                  Member& member) {
    const json::value* value = object.if_contains(name);
    if (value == nullptr) {
      return;
    }
    path_.push_back(name);
    read(*value, member);
    path_.pop_back();
  }

  const json::object* objectOf(const json::value& from) {
    const json::object* object = from.if_object();
    if (object == nullptr) {
      fail("is no object");
    }
    return object;
  }

  void fail(std::string_view what) {
    if (!error_.empty()) {
      return;
    }
    for (const std::string_view name : path_) {
      error_ += (error_.empty() ? "" : ".") + std::string(name);
    }
    error_ += (error_.empty() ? "the line " : " ") + std::string(what);
  }

  std::vector<std::string_view> path_;
  std::string error_;
};

// What is wrong with the schema and version that a line states; empty if
// nothing is.
std::string objectionTo(const json::value& line) {
  const json::object* object = line.if_object();
  const json::value* schema =
      object == nullptr ? nullptr : object->if_contains("schema");
  const json::value* version =
      object == nullptr ? nullptr : object->if_contains("version");
  if (schema == nullptr || !schema->is_string() ||
      schema->get_string() != kSchema) {
    return "this is no " + std::string(kSchema);
  }
  if (version == nullptr || !version->is_string()) {
    return "its version is missing";
  }
  const std::string_view stated = version->get_string();
  const std::string_view major =
      kSchemaVersion.substr(0, kSchemaVersion.find('.') + 1);
  if (stated.substr(0, major.size()) != major) {
    return "its version is " + std::string(stated) + "; only " +
           std::string(major) + "N can be read";
  }
  return "";
}

}  // namespace

base::Result<ServerReport> fromJson(std::string_view line) {
  boost::system::error_code failed;
  const json::value value = json::parse(line, failed);
  std::string problem =
      failed ? "this is no JSON: " + failed.message() : objectionTo(value);
  ServerReport report;
  if (problem.empty()) {
    Reader reader;
    reader.read(value, report);
    problem = reader.error();
  }
  if (!problem.empty()) {
    return base::makeFailure(base::FailureKind::kBadContent,
                             std::move(problem));
  }
  return report;
}

}  // namespace report
