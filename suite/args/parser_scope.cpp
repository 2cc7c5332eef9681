#include "suite/args/parser_scope.h"

#include <algorithm>
#include <utility>

namespace args {
namespace {

ParserScope* currentScope = nullptr;

}  // namespace

ParserScope::ParserScope() : ParserScope(OptionValues()) {}

ParserScope::ParserScope(OptionValues values) : values_(std::move(values)) {
  currentScope = this;
}

ParserScope::~ParserScope() { currentScope = nullptr; }

ParserScope* ParserScope::current() { return currentScope; }

const std::string* ParserScope::find(const std::string& option) const {
  const auto found = values_.find(option);
  return found == values_.end() ? nullptr : &found->second;
}

ParserError ParserScope::registerApp(const std::string& name, int appId) {
  if (name.empty()) {
    return kParserErrorEmptyName;
  }
  const bool taken = std::any_of(registrations_.begin(), registrations_.end(),
                                 [&](const Registration& registration) {
                                   return registration.name == name ||
                                          registration.appId == appId;
                                 });
  if (taken) {
    return kParserErrorRegistered;
  }
  registrations_.push_back({name, appId, {}});
  return kParserErrorNone;
}

ParserError ParserScope::registerOption(int appId, const std::string& spec) {
  const auto known = std::find_if(registrations_.begin(), registrations_.end(),
                                  [&](const Registration& registration) {
                                    return registration.appId == appId;
                                  });
  if (known == registrations_.end()) {
    return kParserErrorUnknownApp;
  }
  base::Result<Specification> specification = parseSpecification(spec);
  if (!specification) {
    specificationError_ = specification.error().cause;
    return kParserErrorSpecification;
  }
  known->specification = *std::move(specification);
  return kParserErrorNone;
}

}  // namespace args
