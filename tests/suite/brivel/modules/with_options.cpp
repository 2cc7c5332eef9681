// An application with options of its own: it prints those that are given, and
// ends as its option --status says, or by the exception that --fail names.
#include <cstdint>
#include <iostream>
#include <stdexcept>
#include <string>

#include "syshealth/host/arg_parser.h"
#include "syshealth/host/log.h"
#include "syshealth/result/brivel_result.h"

#define SAMPLE_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

const std::string kOptions =
    "Prints its options.\n"
    "  --format NAME  json or csv\n"
    "  --all          everything\n"
    "  --status N     how it ends\n"
    "  --fail TEXT    throws it\n";

// What the application of a name says about itself.
std::string specificationOf(const std::string& name) {
  return name == "printer"  ? kOptions
         : name == "plugin" ? kOptions + "exit: plug-in\n"
         : name == "thief"  ? "Takes names.\n--bmc HOST"
                            : "Is muddled.\nno option";
}

}  // namespace

SAMPLE_EXPORT void Init() {
  Tarvex::Log(3, __FILE__, __LINE__).Stream() << "the application starts";
  if (ArgParser* const parser = ArgParser::GetInstance()) {
    parser->RegisterApp(REGISTERED_NAME, 78);
  }
}

SAMPLE_EXPORT std::int32_t ParamRegister(std::int32_t command) {
  if (ArgParser* const parser = ArgParser::GetInstance()) {
    parser->RegisterOption(78, specificationOf(REGISTERED_NAME));
  }
  return command == 2 ? 4 : command == 9 ? 1 : 0;
}

#if defined(__clang__)
#pragma clang diagnostic push
// Host and module are built by one compiler; the class is part of the border.
#pragma clang diagnostic ignored "-Wreturn-type-c-linkage"
#endif
SAMPLE_EXPORT BrivelResult AppMain(std::int32_t command) {
  ArgParser* const parser = ArgParser::GetInstance();
  std::cout << "command " << command;
  for (const std::string option : {"format", "all", "status", "device"}) {
    std::string text;
    if (parser->GetValue(option, text)) {
      std::cout << " " << option << "='" << text << "'";
    }
  }
  std::cout << std::endl;
  if (std::string what; parser->GetValue("fail", what)) {
    throw std::runtime_error(what);
  }
  BrivelResult result;
  int status = 0;
  if (parser->GetValue("status", status)) {
    result.code = status;
  }
  return result;
}
#if defined(__clang__)
#pragma clang diagnostic pop
#endif
