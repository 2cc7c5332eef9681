#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "suite/args/specification.h"

namespace args {

/// Options for applications from the command line, by name without dashes
/// ("device", "node"), each with its text, which may be empty. Options that
/// are not given are missing.
using OptionValues = std::map<std::string, std::string, std::less<>>;

/// What an application told the parser about itself.
struct Registration {
  std::string name;
  int appId = 0;
  Specification specification;  ///< As it was registered last.
};

/// Error codes of `ArgParser::RegisterApp` and `RegisterOption`.
enum ParserError : int {
  kParserErrorNone = 0,
  kParserErrorNoParser = 1,      ///< Called while no parser exists.
  kParserErrorEmptyName = 2,     ///< An application without a name.
  kParserErrorRegistered = 3,    ///< The name or the number is taken.
  kParserErrorUnknownApp = 4,    ///< Options of an unregistered application.
  kParserErrorSpecification = 5  ///< See `parseSpecification`.
};

/// The lifetime of the argument parser: while a scope exists,
/// `ArgParser::GetInstance` returns the parser, which answers from the scope's
/// values; otherwise it returns null. The host makes one scope per module. At
/// most one exists at a time.
class ParserScope {
 public:
  ParserScope();
  explicit ParserScope(OptionValues values);
  ~ParserScope();

  ParserScope(const ParserScope&) = delete;
  ParserScope& operator=(const ParserScope&) = delete;

  /// The current scope; null if there is none.
  static ParserScope* current();

  /// Sets the values, which are known only after the application has registered
  /// its options.
  void setValues(OptionValues values) { values_ = std::move(values); }

  /// The text of an option; null if it is not given.
  const std::string* find(const std::string& option) const;

  /// See `ArgParser::RegisterApp` and `ArgParser::RegisterOption`.
  ParserError registerApp(const std::string& name, int appId);
  ParserError registerOption(int appId, const std::string& spec);

  /// Applications registered so far, in order.
  const std::vector<Registration>& registrations() const {
    return registrations_;
  }

  /// What is wrong with a specification that was refused; empty if none was.
  const std::string& specificationError() const { return specificationError_; }

 private:
  OptionValues values_;
  std::vector<Registration> registrations_;
  std::string specificationError_;
};

}  // namespace args
