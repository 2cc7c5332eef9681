#include "tests/fakes/suite_test.h"

#include <iostream>
#include <string_view>

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

std::vector<std::string> SuiteTest::targetsRead() {
  constexpr std::string_view kMade = "DevHealth(";
  std::vector<std::string> addresses;
  for (const std::string& call : noted(Kind::kCall)) {
    if (call.rfind(kMade, 0) == 0) {
      addresses.push_back(
          call.substr(kMade.size(), call.size() - kMade.size() - 1));
    }
  }
  return addresses;
}

}  // namespace fakes
