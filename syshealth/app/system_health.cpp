#include "syshealth/app/system_health.h"

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>

#include "syshealth/health/name_tables.h"
#include "syshealth/host/arg_parser.h"
#include "syshealth/host/trace.h"
#include "syshealth/result/result_codes.h"

namespace {

constexpr const char* kApplicationName = "syshealth";
constexpr std::int32_t kApplicationId = 29;
constexpr std::int32_t kShowCommand = 1;

constexpr const char* kAllItems = "system,processor,fan,dimm,power,pci_adapter";

// The items that a "device" value names. Taken as they stand: not trimmed, not
// validated, empty ones and repetitions kept.
std::vector<std::string> splitItems(const std::string& device) {
  std::vector<std::string> items;
  boost::algorithm::split(items, device == "all" ? kAllItems : device,
                          boost::algorithm::is_any_of(","),
                          boost::algorithm::token_compress_off);
  return items;
}

}  // namespace

SystemHealth::SystemHealth() {
  traceEntering("SystemHealth::SystemHealth");
  for (const std::string& name : AlertCategoryNames) {
    categoryBuckets.push_back({name, 0, {}});
  }
  traceExiting("SystemHealth::SystemHealth");
}

SystemHealth::~SystemHealth() {
  traceEntering("SystemHealth::~SystemHealth");
  traceExiting("SystemHealth::~SystemHealth");
}

void SystemHealth::Init() {
  traceEntering("SystemHealth::Init");
  ArgParser* const parser = ArgParser::GetInstance();
  if (parser == nullptr) {
    return;
  }
  const int error = parser->RegisterApp(kApplicationName, kApplicationId);
  if (error != 0) {
    SYSHEALTH_LOG(kLogError)
        << "RegisterApp failed with error code = " << error;
  }
  traceExiting("SystemHealth::Init");
}

std::int32_t SystemHealth::ParamRegister(std::int32_t commandNumber) {
  traceEntering("SystemHealth::ParamRegister");
  ArgParser* const parser = ArgParser::GetInstance();
  if (parser == nullptr) {
    return kResultGenericFailure;
  }
  if (commandNumber != kShowCommand) {
    return kResultInvalidCommand;
  }
  // An empty specification cannot be refused for what is in it.
  static_cast<void>(parser->RegisterOption(kApplicationId, ""));
  traceExiting("SystemHealth::ParamRegister");
  return kResultSuccess;
}

BrivelResult SystemHealth::AppMain(std::int32_t commandNumber) {
  traceEntering("SystemHealth::AppMain");
  appId = kApplicationId;
  command = commandNumber;
  const std::int32_t code =
      commandNumber == kShowCommand ? showCmd() : kResultInvalidCommand;
  traceExiting("SystemHealth::AppMain");
  return {code, ""};
}

std::int32_t SystemHealth::showCmd() {
  traceEntering("SystemHealth::showCmd");
  ConnectInfo* const settings = ConnectInfo::Getinstance();
  if (settings == nullptr) {
    SYSHEALTH_LOG(kLogError) << "The ConnectInfo::Getinstance return NULL";
    return kResultGenericFailure;
  }
  const ConnectMode connectionMode = settings->GetConMode();
  SYSHEALTH_LOG(kLogInformation)
      << "The connection mode is " << static_cast<std::int32_t>(connectionMode)
      << "; InBand:1 OOB:2 ESXI:4";

  ArgParser* const parser = ArgParser::GetInstance();
  if (parser == nullptr) {
    return kResultGenericFailure;
  }
  if (!parser->GetValue("device")) {
    // Before the summary, so that its traces follow the dispatcher's.
    traceExiting("SystemHealth::showCmd");
    return showHealthSummary(connectionMode);
  }

  std::string device;
  // A text that cannot be fetched stays empty: one item without a name.
  static_cast<void>(parser->GetValue("device", device));
  std::int32_t result = kResultSuccess;
  for (const std::string& item : splitItems(device)) {
    // Every item is tried; the union of their codes is 0 only when all are.
    result |= showSystemItem(item, connectionMode);
  }
  traceExiting("SystemHealth::showCmd");
  return result;
}
