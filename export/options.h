#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "suite/report/report.h"

namespace exporting {

/// What this application tells the host of itself.
extern const char kSpecification[];

/// The names of the formats, for messages.
#if defined(_WIN32)
inline constexpr char kFormatNames[] = "json, csv";
#else
inline constexpr char kFormatNames[] = "json, prometheus, csv";
#endif

/// The options of a run.
struct Options {
  std::string format = "json";
  std::uint32_t wants = report::kWantAll;  ///< `report::Want` values.
  std::string device;                      ///< As given; empty: everything.
  std::string output;                      ///< Empty: standard output.
  bool schema = false;
};

/// Reads the options from the host's parser. Returns nullopt and sets `error`
/// to what is wrong with them, and what they take.
std::optional<Options> readOptions(std::string& error);

/// The `report::Want` values for a list with commas between ("fan,dimm"), or
/// for "all". Returns nullopt and sets `error` if it names no item.
std::optional<std::uint32_t> wantsOf(const std::string& list,
                                     std::string& error);

}  // namespace exporting
