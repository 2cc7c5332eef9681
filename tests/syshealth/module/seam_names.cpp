#include "tests/syshealth/module/seam_names.h"

#include <cxxabi.h>

#include <cstdlib>
#include <memory>

const std::set<std::string>& seamNames() {
  static const std::set<std::string> kNames = {
      "AppBase::AppBase",
      "AppBase::~AppBase",
      "ArgParser::GetInstance",
      "ArgParser::RegisterApp",
      "ArgParser::RegisterOption",
      "ArgParser::GetValue",
      "ConnectInfo::Getinstance",
      "ConnectInfo::GetConMode",
      "ConnectInfo::TryCimCon",
      "ConnectInfo::GetCimConnectInfo",
      "ConnectInfo::GetIpmiConnectInfo",
      "ConnectInfo::ParseCimError",
      "Tarvex::Log::Log",
      "Tarvex::Log::~Log",
      "Tarvex::Log::Stream",
      "Tarvex::Log::GetMinLogLevel",
      "Tarvex::Agentless::OrvaneTypeAcquire::OrvaneTypeAcquire",
      "Tarvex::Agentless::OrvaneTypeAcquire::~OrvaneTypeAcquire",
      "Tarvex::Agentless::OrvaneTypeAcquire::GetOrvaneType",
      "Tarvex::DeviceHealth::DevHealth::DevHealth",
      "Tarvex::DeviceHealth::DevHealth::~DevHealth",
      "Tarvex::DeviceHealth::DevHealth::connect",
      "Tarvex::DeviceHealth::DevHealth::getHealthSum",
      "Tarvex::DeviceHealth::DevHealth::get_system",
      "Tarvex::DeviceHealth::DevHealth::get_processors",
      "Tarvex::DeviceHealth::DevHealth::get_fans",
      "Tarvex::DeviceHealth::DevHealth::get_DIMMs",
      "Tarvex::DeviceHealth::DevHealth::get_Powers",
      "Tarvex::DeviceHealth::DevHealth::get_PCIApaters"};
  return kNames;
}

std::string readable(const std::string& symbol) {
  const std::unique_ptr<char, decltype(&std::free)> text(
      abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, nullptr),
      &std::free);
  const std::string name = text ? text.get() : symbol;
  return name.substr(0, name.find_first_of("(["));
}
