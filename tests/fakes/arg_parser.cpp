#include "syshealth/host/arg_parser.h"

#include <map>
#include <string>

#include "tests/fakes/script.h"

namespace {

// Takes over the option's value, as the parser does, only where it has one.
template <typename Value>
bool answer(const std::map<std::string, Value>& values,
            const std::string& option, Value& value) {
  const auto found = values.find(option);
  if (found == values.end()) {
    return false;
  }
  value = found->second;
  return true;
}

}  // namespace

ArgParser* ArgParser::GetInstance() {
  static ArgParser parser;
  fakes::enter("ArgParser::GetInstance()");
  int& fetches = fakes::script().parserFetches;
  if (fetches == 0) {
    return nullptr;
  }
  if (fetches > 0) {
    --fetches;
  }
  return &parser;
}

int ArgParser::RegisterApp(const std::string& name, int appId) {
  fakes::enter("ArgParser::RegisterApp(" + name + ", " + std::to_string(appId) +
               ")");
  return fakes::script().registerAppResult;
}

int ArgParser::RegisterOption(int appId, const std::string& spec) {
  fakes::enter("ArgParser::RegisterOption(" + std::to_string(appId) + ", \"" +
               spec + "\")");
  return fakes::script().registerOptionResult;
}

bool ArgParser::GetValue(const std::string& option) {
  fakes::enter("ArgParser::GetValue(" + option + ")");
  bool present = false;
  answer(fakes::script().present, option, present);
  return present;
}

bool ArgParser::GetValue(const std::string& option, std::string& value) {
  fakes::enter("ArgParser::GetValue(" + option + ", text \"" + value + "\")");
  return answer(fakes::script().texts, option, value);
}

bool ArgParser::GetValue(const std::string& option, int& value) {
  fakes::enter("ArgParser::GetValue(" + option + ", integer " +
               std::to_string(value) + ")");
  return answer(fakes::script().numbers, option, value);
}
