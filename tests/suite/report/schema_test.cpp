#include <gtest/gtest.h>

#include <boost/json/parse.hpp>
#include <set>
#include <string>
#include <vector>

#include "suite/report/json.h"
#include "suite/report/words.h"
#include "tests/suite/report/sample_report.h"
#include "tests/support/file_text.h"

// The published schema names every key that is written, and every word.

namespace report {
namespace {

namespace json = boost::json;

const json::value& schema() {
  static const json::value kSchemaDocument =
      json::parse(support::fileText(SCHEMA_FILE));
  return kSchemaDocument;
}

// A schema, or the definition that it refers to.
const json::object& resolved(const json::value& value) {
  const json::object& object = value.as_object();
  const json::value* link = object.if_contains("$ref");
  if (link == nullptr) {
    return object;
  }
  const std::string pointer(link->as_string().c_str() + 1);
  return schema().at_pointer(pointer).as_object();
}

// Compares the keys of a value, and of all that it holds, with the schema.
void compare(const json::value& value, const json::value& described,
             const std::string& place) {
  const json::object& rules = resolved(described);
  if (const json::array* array = value.if_array()) {
    if (rules.contains("items") && !array->empty()) {
      compare(array->front(), rules.at("items"), place + "[]");
    }
    return;
  }
  const json::object* object = value.if_object();
  if (object == nullptr) {
    EXPECT_TRUE(rules.contains("type") || rules.contains("enum") ||
                rules.contains("const") || rules.contains("$ref"))
        << place;
    return;
  }
  std::vector<std::string> written;
  for (const auto& member : *object) {
    written.emplace_back(member.key());
  }
  std::vector<std::string> properties;
  for (const auto& member : rules.at("properties").as_object()) {
    properties.emplace_back(member.key());
  }
  std::vector<std::string> required;
  for (const json::value& name : rules.at("required").as_array()) {
    required.emplace_back(name.as_string());
  }
  EXPECT_EQ(properties, written) << place;
  EXPECT_EQ(required, written) << place;
  for (const auto& member : *object) {
    const std::string key(member.key());
    const json::value* rule =
        rules.at("properties").as_object().if_contains(key);
    if (rule != nullptr) {
      compare(member.value(), *rule, place + "." + key);
    }
  }
}

TEST(Schema, HasTheKeysThatAreWritten) {
  compare(json::parse(toJson(fullReport())), schema(), "report");
}

template <typename Words>
void expectWords(const std::string& pointer, const Words& words) {
  std::set<std::string> expected(std::begin(words), std::end(words));
  std::set<std::string> described;
  for (const json::value& word : schema().at_pointer(pointer).as_array()) {
    described.emplace(word.as_string());
  }
  EXPECT_EQ(described, expected) << pointer;
}

TEST(Schema, HasTheWordsThatAreWritten) {
  expectWords("/$defs/health/enum", kHealthWords);
  expectWords("/$defs/state/enum", kStateWords);
  expectWords("/$defs/event/properties/category/enum", kCategoryWords);
  expectWords("/$defs/event/properties/severity/enum", kHealthWords);
  expectWords("/properties/system/properties/power_state/enum",
              kPowerStateWords);
  expectWords("/properties/target/properties/via/enum", kSourceWords);
  expectWords("/properties/read/properties/status/enum", kReadStatusWords);
}

}  // namespace
}  // namespace report
