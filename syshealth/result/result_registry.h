#pragma once

#include <map>
#include <string>

// A result code is a 32-bit signed integer, 0 for success. Two families share
// it:
//  - registered codes, bits 8 to 15 all zero: `number | (module << 16)`.
//    Module 0 is suite-wide; the other modules number downward from 125, so a
//    registered code never reaches bit 8;
//  - legacy codes, bits 8 to 15 not all zero: 16 bits, the high byte a group,
//    the low byte the row in it. They have a text and no constant.
//
// Nothing here locks: registration runs while the library is loaded, lookups
// on the one thread that runs a command.

/// Records the message of a registered code and gives the code. Registering a
/// code again overwrites its text. Modules of 0 and below share one table.
/// Meant for the initialisers of the result constants.
int registerResult(int module, int number, const char* message);

/// The message of any code, registered or legacy. A code without one gives
/// "Unknow error" in the registered family, "Unknown error" in the legacy one;
/// scripts tell the families apart by that letter.
std::string getResultMessage(int code);

/// The message of a registered code: looked for among the codes of module 0
/// and below first, whatever `module` is, then among those of `module`.
/// "Unknow error" where neither has it.
std::string lookupRegisteredMessage(int code, int module);

/// Owner of the messages of the registered codes, one per library that links
/// this room. The result constants of every source file fill it while the
/// library is loaded, in no promised order among the files; every table is
/// therefore created on its first use.
class ResultRegistry {
 public:
  using Messages = std::map<int, std::string>;  ///< By composed code.

  /// The library's registry, created on the first call.
  static ResultRegistry& instance();

  ResultRegistry(const ResultRegistry&) = delete;
  ResultRegistry& operator=(const ResultRegistry&) = delete;

  /// Messages of module 0 and below.
  Messages& generalTable();

  /// Messages of the modules above 0, by module number.
  std::map<int, Messages>& moduleTables();

 private:
  ResultRegistry() = default;

  // The tables in use belong to their accessors, so that a table made later
  // than this object is destroyed before it. The object's own pair is created
  // with it and never filled.
  Messages ownGeneralTable_;
  std::map<int, Messages> ownModuleTables_;
};
