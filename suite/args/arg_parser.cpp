#include "syshealth/host/arg_parser.h"

#include <optional>

#include "suite/args/parser_scope.h"
#include "suite/base/numbers.h"

ArgParser* ArgParser::GetInstance() {
  static ArgParser parser;
  return args::ParserScope::current() == nullptr ? nullptr : &parser;
}

int ArgParser::RegisterApp(const std::string& name, int appId) {
  args::ParserScope* const scope = args::ParserScope::current();
  return scope == nullptr ? args::kParserErrorNoParser
                          : scope->registerApp(name, appId);
}

int ArgParser::RegisterOption(int appId, const std::string& spec) {
  args::ParserScope* const scope = args::ParserScope::current();
  return scope == nullptr ? args::kParserErrorNoParser
                          : scope->registerOption(appId, spec);
}

bool ArgParser::GetValue(const std::string& option) {
  const args::ParserScope* const scope = args::ParserScope::current();
  return scope != nullptr && scope->find(option) != nullptr;
}

bool ArgParser::GetValue(const std::string& option, std::string& value) {
  const args::ParserScope* const scope = args::ParserScope::current();
  const std::string* const text =
      scope == nullptr ? nullptr : scope->find(option);
  if (text == nullptr) {
    return false;
  }
  value = *text;
  return true;
}

bool ArgParser::GetValue(const std::string& option, int& value) {
  std::string text;
  if (!GetValue(option, text)) {
    return false;
  }
  const std::optional<int> number = base::parseNumber<int>(text);
  if (!number) {
    return false;
  }
  value = *number;
  return true;
}
