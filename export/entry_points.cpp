#include "syshealth/app/entry_points.h"

#include "export/options.h"
#include "export/run.h"
#include "syshealth/host/arg_parser.h"

namespace {

constexpr int kAppId = 101;
constexpr std::int32_t kShow = 1;
constexpr std::int32_t kInvalidCommand = 4;

}  // namespace

void Init() {
  if (ArgParser* const parser = ArgParser::GetInstance()) {
    parser->RegisterApp("export", kAppId);
  }
}

std::int32_t ParamRegister(std::int32_t command) {
  ArgParser* const parser = ArgParser::GetInstance();
  if (parser == nullptr ||
      parser->RegisterOption(kAppId, exporting::kSpecification) != 0) {
    return 1;
  }
  return command == kShow ? 0 : kInvalidCommand;
}

BrivelResult AppMain(std::int32_t /*command*/) { return exporting::run(); }
