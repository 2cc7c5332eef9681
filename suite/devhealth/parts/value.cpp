#include "suite/devhealth/parts/value.h"

#include <array>
#include <charconv>
#include <cmath>

#include "suite/base/filler.h"
#include "suite/base/numbers.h"
#include "suite/base/text.h"

namespace devhealth {
namespace {

namespace json = redfish::json;

// Larger than any quantity of a server, and small enough that a double holds
// every integer below it.
constexpr double kLargestNumber = 1e15;

std::optional<double> plausible(double number) {
  if (!std::isfinite(number) || std::abs(number) > kLargestNumber) {
    return std::nullopt;
  }
  return number;
}

std::optional<double> plausibleNumber(std::string_view text) {
  const std::optional<double> number = base::parseNumber<double>(text);
  return number ? plausible(*number) : std::nullopt;
}

template <typename Integer>
std::string digits(Integer number) {
  std::array<char, 24> buffer{};
  const auto result =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
  return {buffer.data(), result.ptr};
}

}  // namespace

std::string plainText(std::string_view text) {
  return base::excerpt(text, kMaxTextBytes);
}

std::string plainTextAt(const json::object& object, std::string_view path) {
  const std::string_view text = redfish::stringAt(object, path);
  return text.empty() ? textAt(object, path) : plainText(text);
}

std::string recordText(std::string_view text) {
  std::string clean = plainText(text);
  if (base::isFiller(clean)) {
    clean.clear();
  }
  return clean;
}

std::string textOf(const json::value& value) {
  switch (value.kind()) {
    case json::kind::string: {
      const json::string& text = value.get_string();
      return recordText({text.data(), text.size()});
    }
    case json::kind::int64:
      return digits(value.get_int64());
    case json::kind::uint64:
      return digits(value.get_uint64());
    case json::kind::double_: {
      const std::optional<double> number = plausible(value.get_double());
      return number ? formatNumber(*number) : std::string();
    }
    default:
      return {};
  }
}

std::string textAt(const json::object& object, std::string_view path) {
  const json::value* value = redfish::memberAt(object, path);
  return value == nullptr ? std::string() : textOf(*value);
}

std::string firstTextAt(const json::object& object,
                        std::initializer_list<std::string_view> paths) {
  for (const std::string_view path : paths) {
    std::string text = textAt(object, path);
    if (!text.empty()) {
      return text;
    }
  }
  return {};
}

std::optional<double> numberOf(const json::value& value) {
  switch (value.kind()) {
    case json::kind::int64:
      return plausible(static_cast<double>(value.get_int64()));
    case json::kind::uint64:
      return plausible(static_cast<double>(value.get_uint64()));
    case json::kind::double_:
      return plausible(value.get_double());
    case json::kind::string: {
      const json::string& text = value.get_string();
      return plausibleNumber(base::cleanText({text.data(), text.size()}));
    }
    default:
      return std::nullopt;
  }
}

std::optional<double> numberAt(const json::object& object,
                               std::string_view path) {
  const json::value* value = redfish::memberAt(object, path);
  return value == nullptr ? std::nullopt : numberOf(*value);
}

std::optional<double> positiveAt(const json::object& object,
                                 std::string_view path) {
  const std::optional<double> number = numberAt(object, path);
  return number && *number > 0 ? number : std::nullopt;
}

std::vector<const json::object*> makersObjects(const json::object& resource) {
  std::vector<const json::object*> objects;
  const json::object* makers = redfish::objectAt(resource, "Oem");
  if (makers == nullptr) {
    return objects;
  }
  for (const auto& maker : *makers) {
    if (const json::object* own = maker.value().if_object()) {
      objects.push_back(own);
    }
  }
  return objects;
}

std::string formatNumber(double number) {
  std::array<char, 32> buffer{};
  // Adding zero turns the negative zero into the plain one.
  const double rounded = std::round(number * 10) / 10 + 0.0;
  const auto result =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), rounded,
                    std::chars_format::fixed, 1);
  std::string_view text(buffer.data(),
                        static_cast<std::size_t>(result.ptr - buffer.data()));
  if (text.substr(text.size() - 2) == ".0") {
    text.remove_suffix(2);
  }
  return std::string(text);
}

std::string quantity(std::optional<double> number, std::string_view unit) {
  if (!number) {
    return {};
  }
  std::string text = formatNumber(*number);
  text += ' ';
  text += unit;
  return text;
}

}  // namespace devhealth
