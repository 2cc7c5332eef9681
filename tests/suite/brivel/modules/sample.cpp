// An application for tests: it prints what the host gives it, and ends as its
// command number says.
#include <csignal>
#include <cstdint>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "syshealth/host/arg_parser.h"
#include "syshealth/host/connect_info.h"
#include "syshealth/host/log.h"
#include "syshealth/result/brivel_result.h"

#define SAMPLE_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

void printOption(const std::string& option) {
  std::string text;
  if (ArgParser::GetInstance()->GetValue(option, text)) {
    std::cout << option << " '" << text << "'\n";
  }
}

// The list's error, else its length and each record's node.
void printTargets() {
  ConnectInfo* const service = ConnectInfo::Getinstance();
  std::vector<Tarvex::TarvexConnection::ConnectionInfo> list;
  const ConnectionErr error = service->GetCimConnectInfo(list);
  std::cout << "targets error " << error << ":";
  for (const auto& target : list) {
    std::cout << " " << target.address << "/" << target.nodeIndex;
  }
  std::cout << "\n";
}

int tryTarget() {
  Tarvex::TarvexConnection::ConnectionInfo info;
  const int code = ConnectInfo::Getinstance()->TryCimCon(info);
  std::cout << "reached " << code << " user '" << info.user << "' from '"
            << info.credential << "'\n";
  return code;
}

}  // namespace

SAMPLE_EXPORT void Init() {
  if (ArgParser* const parser = ArgParser::GetInstance()) {
    parser->RegisterApp("sample", 77);
  }
}

SAMPLE_EXPORT std::int32_t ParamRegister(std::int32_t command) {
  if (ArgParser* const parser = ArgParser::GetInstance()) {
    parser->RegisterOption(77, "");
  }
  return command == 2 ? 4 : 0;
}

#if defined(__clang__)
#pragma clang diagnostic push
// Host and module are built by one compiler; the class is part of the border.
#pragma clang diagnostic ignored "-Wreturn-type-c-linkage"
#endif
SAMPLE_EXPORT BrivelResult AppMain(std::int32_t command) {
  Tarvex::Log(3, __FILE__, __LINE__).Stream() << "sample command " << command;
  BrivelResult result;
  switch (command) {
    case 1:
      std::cout << "mode " << ConnectInfo::Getinstance()->GetConMode() << "\n";
      printOption("device");
      printOption("node");
      break;
    case 300:
      printTargets();
      break;
    case 301:
      result.code = tryTarget();
      break;
    case 302:
      throw std::runtime_error("out of ideas");
    case 303:
      std::raise(SIGINT);
      result.code = 47;
      break;
    case 304:
      result.code = 17;
      result.message = "a message of its own";
      break;
    case 305:
      throw 5;
    case 306:
      result.code = tryTarget();
      std::raise(SIGTERM);
      break;
    default:
      result.code = command;
      break;
  }
  std::cout << std::flush;
  return result;
}
#if defined(__clang__)
#pragma clang diagnostic pop
#endif
