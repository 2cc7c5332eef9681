#include "suite/report/json.h"

#include <boost/json/serialize.hpp>
#include <charconv>
#include <cmath>
#include <type_traits>

#include "suite/report/fields.h"
#include "suite/report/words.h"

namespace report {
namespace {

constexpr std::string_view kNull = "null";

template <typename Structure, typename = void>
struct IsStructure : std::false_type {};

template <typename Structure>
struct IsStructure<Structure, std::void_t<decltype(Fields<Structure>::kList)>>
    : std::true_type {};

// Appends values to one text. Null, [] and the order of the keys are rules of
// the report and so stand here; how a text is quoted is the library's matter.
class Writer {
 public:
  std::string take() { return std::move(text_); }

  void write(const std::string& value) {
    if (value.empty()) {
      text_ += kNull;
    } else {
      text_ += boost::json::serialize(boost::json::string_view(value));
    }
  }

  void write(std::int64_t value) { text_ += std::to_string(value); }
  void write(int value) { text_ += std::to_string(value); }

  // The fewest digits that stand for the number, without an exponent.
  void write(double value) {
    char digits[400];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), value,
                                   std::chars_format::fixed);
    if (!std::isfinite(value) || end.ec != std::errc()) {
      text_ += kNull;
    } else {
      text_.append(digits, end.ptr);
    }
  }

  void write(const std::array<Health, kCategories>& categories) {
    char separator = '{';
    for (std::size_t i = 0; i < kCategories; ++i) {
      key(separator, kCategoryWords[i]);
      write(categories[i]);
    }
    text_ += '}';
  }

  template <typename Value>
  void write(const std::optional<Value>& value) {
    if (value) {
      write(*value);
    } else {
      text_ += kNull;
    }
  }

  template <typename Element>
  void write(const std::vector<Element>& list) {
    text_ += '[';
    for (const Element& element : list) {
      if (&element != &list.front()) {
        text_ += ',';
      }
      write(element);
    }
    text_ += ']';
  }

  template <typename Value>
  auto write(const Value& value) -> std::enable_if_t<std::is_enum_v<Value>> {
    text_ += '"';
    text_ += wordFor(value);
    text_ += '"';
  }

  template <typename Value>
  auto write(const Value& value)
      -> std::enable_if_t<IsStructure<Value>::value> {
    writeFields('{', value);
  }

  template <typename Value>
  void writeFields(char separator, const Value& value) {
    forEachField(value, [&](std::string_view name, const auto& member) {
      key(separator, name);
      write(member);
    });
    text_ += '}';
  }

  // The version stands in front of the report's own fields.
  void writeReport(const ServerReport& report) {
    char separator = '{';
    key(separator, "schema");
    write(std::string(kSchema));
    key(separator, "version");
    write(std::string(kSchemaVersion));
    writeFields(separator, report);
  }

 private:
  void key(char& separator, std::string_view name) {
    text_ += separator;
    text_ += '"';
    text_ += name;
    text_ += "\":";
    separator = ',';
  }

  std::string text_;
};

}  // namespace

std::string toJson(const ServerReport& report) {
  Writer writer;
  writer.writeReport(report);
  return writer.take();
}

}  // namespace report
