#pragma once

#include <string>

#include "syshealth/host/export.h"

/// The suite's argument parser as applications see it: one per process, owned
/// by the host, alive from before `Init` until after the module is unloaded.
class BRIVEL_SUITE_API ArgParser {
 public:
  /// The host's parser; null when there is none.
  static ArgParser* GetInstance();

  /// Registers an application under its name. 0 on success, otherwise an
  /// error code of the parser's own.
  int RegisterApp(const std::string& name, int appId);

  /// Registers the option specification of a registered application. 0 on
  /// success.
  int RegisterOption(int appId, const std::string& spec);

  /// Whether the option stands on the command line.
  bool GetValue(const std::string& option);

  /// True, and the option's text in `value`, when the option is present;
  /// otherwise false, and `value` stays as it was.
  bool GetValue(const std::string& option, std::string& value);

  /// True, and the option's number in `value`, when the option is present and
  /// is a number; otherwise false, and `value` stays as it was.
  bool GetValue(const std::string& option, int& value);
};
