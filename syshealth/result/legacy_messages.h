#pragma once

#include <map>
#include <string>

/// Messages of the legacy codes, by code. Empty when the library is loaded;
/// the first lookup of a legacy code fills it, so that a run that meets none
/// does not pay for it.
extern std::map<int, std::string> legacyMessageTable;

/// Enters every legacy row into `legacyMessageTable`.
void fillLegacyMessageTable();
