#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace args {

/// Options that the command line gives to applications, by name without
/// dashes ("device", "node"), each with its text. An option that is not given
/// is not in it; one that is given empty is.
using OptionValues = std::map<std::string, std::string, std::less<>>;

/// What an application told the parser about itself.
struct Registration {
  std::string name;
  int appId = 0;
};

/// Error codes of `ArgParser::RegisterApp` and `RegisterOption`.
enum ParserError : int {
  kParserErrorNone = 0,
  kParserErrorNoParser = 1,      ///< Called when no parser is alive.
  kParserErrorEmptyName = 2,     ///< An application without a name.
  kParserErrorRegistered = 3,    ///< The name or the number is taken.
  kParserErrorUnknownApp = 4,    ///< Options for an application never heard of.
  kParserErrorSpecification = 5  ///< Applications have no options of their own.
};

/// The parser's life: while a scope lives, `ArgParser::GetInstance` gives the
/// parser, which answers from the scope's values; before and after it gives
/// null. The host keeps one scope per module. At most one lives at a time.
class ParserScope {
 public:
  explicit ParserScope(OptionValues values);
  ~ParserScope();

  ParserScope(const ParserScope&) = delete;
  ParserScope& operator=(const ParserScope&) = delete;

  /// The living scope; null when there is none.
  static ParserScope* current();

  /// The text of an option; null when it is not given.
  const std::string* find(const std::string& option) const;

  /// What `ArgParser`'s operations of the same name do.
  ParserError registerApp(const std::string& name, int appId);
  ParserError registerOption(int appId, const std::string& spec) const;

  /// Applications registered so far, in order.
  const std::vector<Registration>& registrations() const {
    return registrations_;
  }

 private:
  OptionValues values_;
  std::vector<Registration> registrations_;
};

}  // namespace args
