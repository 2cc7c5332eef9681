#pragma once

#include <map>
#include <string>
#include <vector>

#include "syshealth/health/alert.h"
#include "syshealth/health/orvane_type.h"
#include "syshealth/host/connect_info.h"
#include "syshealth/inventory/components.h"

namespace fakes {

/// How the device-health client of one target answers. The data are handed
/// over whatever the status, so that a test sees when they are used wrongly.
struct TargetScript {
  int connectStatus = 0;
  int healthStatus = 0;
  int readStatus = 0;  ///< Of every inventory getter.
  std::vector<Tarvex::DeviceHealth::Alert> alerts;
  Tarvex::DeviceHealth::SystemBoard system;
  std::vector<Tarvex::DeviceHealth::Processor> processors;
  std::vector<Tarvex::DeviceHealth::Fan> fans;
  std::vector<Tarvex::DeviceHealth::DIMM> dimms;
  std::vector<Tarvex::DeviceHealth::Power> powers;
  std::vector<Tarvex::DeviceHealth::PCIAdapter> adapters;
};

inline constexpr int kAlways = -1;

/// How the suite's services answer: by default, all exist, everything
/// succeeds, out-of-band, the newest generation, and there are no targets.
struct Script {
  unsigned int logThreshold = 4;

  int parserFetches = kAlways;  ///< How many fetches give a parser.
  int registerAppResult = 0;
  int registerOptionResult = 0;
  std::map<std::string, bool> present;       ///< Answers the presence form.
  std::map<std::string, std::string> texts;  ///< Answers the text form.
  std::map<std::string, int> numbers;        ///< Answers the integer form.

  int settingsFetches = kAlways;  ///< How many fetches give a service.
  ConnectMode mode = kConnectModeOutOfBand;
  int reachability = 0;
  ConnectionErr cimError = kConnectionErrNone;
  ConnectionErr ipmiError = kConnectionErrNone;
  std::vector<Tarvex::TarvexConnection::ConnectionInfo> cimTargets;
  std::vector<Tarvex::TarvexConnection::ConnectionInfo> ipmiTargets;
  BrivelResult parsedError;

  int probeStatus = 0;
  Tarvex::Agentless::OrvaneTypeValue generation =
      Tarvex::Agentless::kOrvaneTypeDravik;

  std::map<std::string, TargetScript> targets;  ///< By address.

  /// The call, as the journal shows it, that throws `std::runtime_error`.
  std::string throwingCall;
};

/// The script in force.
Script& script();

/// The default script and an empty journal.
void reset();

/// Notes a call, and throws where the script says so.
void enter(const std::string& call);

}  // namespace fakes
