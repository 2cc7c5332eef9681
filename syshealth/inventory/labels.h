#pragma once

#include <array>
#include <string>

// The column labels of the component reports, and the property of the
// management data that each field of a record carries, in the order of the
// record's fields. The system board's fields have no properties of their own.

extern const std::array<std::string, 4> kSystemBoardLabels;

extern const std::array<std::string, 5> kProcessorLabels;
extern const std::array<std::string, 5> kProcessorProperties;

extern const std::array<std::string, 3> kFanLabels;
extern const std::array<std::string, 3> kFanProperties;

extern const std::array<std::string, 6> kDimmLabels;
extern const std::array<std::string, 6> kDimmProperties;

extern const std::array<std::string, 3> kPowerLabels;
extern const std::array<std::string, 3> kPowerProperties;

/// The last field, the status descriptions, is never printed and has no label.
extern const std::array<std::string, 8> kPciAdapterLabels;
extern const std::array<std::string, 9> kPciAdapterProperties;
