#include "syshealth/app/entry_points.h"

#include "check/options.h"
#include "check/run.h"
#include "syshealth/host/arg_parser.h"

namespace {

constexpr int kAppId = 102;
constexpr std::int32_t kShow = 1;
constexpr std::int32_t kGenericFailure = 1;
constexpr std::int32_t kInvalidCommand = 4;

}  // namespace

void Init() {
  if (ArgParser* const parser = ArgParser::GetInstance()) {
    parser->RegisterApp("check", kAppId);
  }
}

std::int32_t ParamRegister(std::int32_t command) {
  ArgParser* const parser = ArgParser::GetInstance();
  if (parser == nullptr ||
      parser->RegisterOption(kAppId, check::kSpecification) != 0) {
    return kGenericFailure;
  }
  return command == kShow ? 0 : kInvalidCommand;
}

BrivelResult AppMain(std::int32_t /*command*/) { return check::run(); }
