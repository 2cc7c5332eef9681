#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "syshealth/host/connection_info.h"
#include "tests/fakes/console_capture.h"
#include "tests/fakes/script.h"

namespace fakes {

/// A test on the far side of the scripted suite: the default script, an empty
/// journal, and the console captured.
class SuiteTest : public testing::Test {
 protected:
  SuiteTest();

  /// The option on the command line with this text.
  static void giveDevice(const std::string& items);

  /// The option on the command line with this number.
  static void giveNode(int node);

  /// A target connection under an address.
  static Tarvex::TarvexConnection::ConnectionInfo target(
      const std::string& address, std::uint16_t nodeIndex = 0);

  /// The addresses whose device-health clients were made so far, in order.
  static std::vector<std::string> targetsRead();

  /// What was written to the standard streams, byte for byte.
  const std::string& output() const { return output_.bytes(); }
  const std::string& errors() const { return error_.bytes(); }

 private:
  StreamCapture output_;
  StreamCapture error_;
};

}  // namespace fakes
