#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "suite/run/run.h"
#include "syshealth/host/connection_info.h"
#include "tests/suite/redfish/script_transport.h"

/// A run with one target: a recorded server whose answers a test may replace.
class RunFixture : public testing::Test {
 protected:
  RunFixture();

  /// Makes the service of the target, from the script as it stands.
  void start();

  /// The target is the sample of this name.
  void serve(const std::string& sample);

  std::shared_ptr<Script> script = std::make_shared<Script>();
  redfish::ServiceOptions options;
  std::unique_ptr<run::Run> run = std::make_unique<run::Run>();
  Tarvex::TarvexConnection::ConnectionInfo connection;
};
