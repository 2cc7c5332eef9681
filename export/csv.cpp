#include "export/csv.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>
#include <type_traits>
#include <vector>

#include "suite/report/fields.h"
#include "suite/report/words.h"

namespace exporting {
namespace {

std::string cell(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) {
    return text;
  }
  std::string quoted = "\"";
  for (const char c : text) {
    quoted += c;
    if (c == '"') {
      quoted += '"';
    }
  }
  return quoted + '"';
}

std::string cell(const std::optional<std::int64_t>& number) {
  return number ? std::to_string(*number) : "";
}

// The fewest digits that stand for the number, without an exponent.
std::string cell(const std::optional<double>& number) {
  if (!number || !std::isfinite(*number)) {
    return "";
  }
  char digits[400];
  const auto end = std::to_chars(std::begin(digits), std::end(digits), *number,
                                 std::chars_format::fixed);
  return std::string(digits, end.ptr);
}

template <typename Enumeration>
auto cell(Enumeration value)
    -> std::enable_if_t<std::is_enum_v<Enumeration>, std::string> {
  return std::string(report::wordFor(value));
}

template <typename Part>
std::string header() {
  std::string row = "target,node";
  report::forEachField(Part(), [&](std::string_view name, const auto&) {
    row += ',';
    row += name;
  });
  return row + "\r\n";
}

template <typename Part>
std::string row(const report::Target& target, const Part& part) {
  std::string cells = cell(target.name) + ',' + std::to_string(target.node);
  report::forEachField(part, [&](std::string_view, const auto& value) {
    cells += ',' + cell(value);
  });
  return cells + "\r\n";
}

template <typename Part>
std::string rows(const report::Target& target,
                 const std::optional<std::vector<Part>>& parts) {
  std::string all;
  if (parts) {
    for (const Part& part : *parts) {
      all += row(target, part);
    }
  }
  return all;
}

}  // namespace

std::string csvHeader(report::Want table) {
  switch (table) {
    case report::kWantSystem:
      return header<report::System>();
    case report::kWantProcessors:
      return header<report::Processor>();
    case report::kWantFans:
      return header<report::Fan>();
    case report::kWantMemory:
      return header<report::MemoryModule>();
    case report::kWantPowerSupplies:
      return header<report::PowerSupply>();
    case report::kWantPciAdapters:
      return header<report::PciAdapter>();
    case report::kWantHealth:
      return header<report::Event>();
    case report::kWantAll:
      break;  // No table.
  }
  return "";
}

std::string csvRows(report::Want table, const report::ServerReport& report) {
  switch (table) {
    case report::kWantSystem:
      return report.read.status == report::ReadStatus::kFailed
                 ? ""
                 : row(report.target, report.system);
    case report::kWantProcessors:
      return rows(report.target, report.processors);
    case report::kWantFans:
      return rows(report.target, report.fans);
    case report::kWantMemory:
      return rows(report.target, report.memory);
    case report::kWantPowerSupplies:
      return rows(report.target, report.powerSupplies);
    case report::kWantPciAdapters:
      return rows(report.target, report.pciAdapters);
    case report::kWantHealth:
      return rows(report.target, report.health.events);
    case report::kWantAll:
      break;  // No table.
  }
  return "";
}

}  // namespace exporting
