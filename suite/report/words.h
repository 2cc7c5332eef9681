#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "suite/report/report.h"

namespace report {

// The words for the enumerators of the report, each in the order of its
// enumeration.

inline constexpr std::string_view kHealthWords[] = {"unknown", "normal",
                                                    "warning", "error"};
inline constexpr std::string_view kStateWords[] = {
    "unknown",         "enabled",       "disabled",
    "standby_offline", "standby_spare", "in_test",
    "starting",        "absent",        "unavailable_offline",
    "deferring",       "quiesced",      "updating",
    "qualified",       "degraded"};
inline constexpr std::string_view kPowerStateWords[] = {
    "unknown", "on", "off", "powering_on", "powering_off", "paused"};
inline constexpr std::string_view kSourceWords[] = {"redfish", "local"};
inline constexpr std::string_view kReadStatusWords[] = {"complete", "partial",
                                                        "failed"};
inline constexpr std::string_view kCategoryWords[kCategories] = {
    "system", "processors", "cooling", "memory",
    "pci",    "power",      "disks",   "other"};

/// The words of an enumeration; the value is not used.
constexpr const auto& wordsOf(Health /*unused*/) { return kHealthWords; }
constexpr const auto& wordsOf(State /*unused*/) { return kStateWords; }
constexpr const auto& wordsOf(PowerState /*unused*/) {
  return kPowerStateWords;
}
constexpr const auto& wordsOf(Source /*unused*/) { return kSourceWords; }
constexpr const auto& wordsOf(ReadStatus /*unused*/) {
  return kReadStatusWords;
}
constexpr const auto& wordsOf(Category /*unused*/) { return kCategoryWords; }

/// The word for an enumerator: "warning".
template <typename Enumeration>
constexpr std::string_view wordFor(Enumeration value) {
  return wordsOf(value)[static_cast<std::size_t>(value)];
}

/// The enumerator of a word; nullopt if there is none.
template <typename Enumeration>
std::optional<Enumeration> fromWord(std::string_view word) {
  std::size_t index = 0;
  for (const std::string_view known : wordsOf(Enumeration())) {
    if (known == word) {
      return static_cast<Enumeration>(index);
    }
    ++index;
  }
  return std::nullopt;
}

}  // namespace report
