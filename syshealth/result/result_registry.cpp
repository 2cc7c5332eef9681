#include "syshealth/result/result_registry.h"

#include "syshealth/result/legacy_messages.h"

ResultRegistry& ResultRegistry::instance() {
  static ResultRegistry registry;
  return registry;
}

ResultRegistry::Messages& ResultRegistry::generalTable() {
  static Messages table;
  return table;
}

std::map<int, ResultRegistry::Messages>& ResultRegistry::moduleTables() {
  static std::map<int, Messages> tables;
  return tables;
}

int registerResult(int module, int number, const char* message) {
  // Shifted as unsigned: a negative module has no defined signed shift.
  const int code =
      number | static_cast<int>(static_cast<unsigned int>(module) << 16U);
  ResultRegistry& registry = ResultRegistry::instance();
  if (module > 0) {
    registry.moduleTables()[module][code] = message;
  } else {
    registry.generalTable()[code] = message;
  }
  return code;
}

std::string lookupRegisteredMessage(int code, int module) {
  ResultRegistry& registry = ResultRegistry::instance();
  const ResultRegistry::Messages& general = registry.generalTable();
  if (const auto row = general.find(code); row != general.end()) {
    return row->second;
  }
  const std::map<int, ResultRegistry::Messages>& modules =
      registry.moduleTables();
  if (const auto table = modules.find(module); table != modules.end()) {
    if (const auto row = table->second.find(code); row != table->second.end()) {
      return row->second;
    }
  }
  return "Unknow error";  // The missing letter is meant.
}

std::string getResultMessage(int code) {
  if ((code & 0xFF00) == 0) {
    // An arithmetic shift: a negative code gives a negative module, which has
    // no table.
    return lookupRegisteredMessage(code, code >> 16);
  }
  if (legacyMessageTable.empty()) {
    fillLegacyMessageTable();
  }
  const auto row = legacyMessageTable.find(code);
  return row != legacyMessageTable.end() ? row->second : "Unknown error";
}
