#include "tests/fakes/suite_test.h"

#include <iostream>

namespace fakes {

SuiteTest::SuiteTest()
    : output_(std::cout, Kind::kOutput), error_(std::cerr, Kind::kError) {
  reset();
}

void SuiteTest::giveDevice(const std::string& items) {
  script().present["device"] = true;
  script().texts["device"] = items;
}

void SuiteTest::giveNode(int node) { script().numbers["node"] = node; }

Tarvex::TarvexConnection::ConnectionInfo SuiteTest::target(
    const std::string& address, std::uint16_t nodeIndex) {
  Tarvex::TarvexConnection::ConnectionInfo info;
  info.address = address;
  info.nodeIndex = nodeIndex;
  return info;
}

}  // namespace fakes
