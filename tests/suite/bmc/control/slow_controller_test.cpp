// The controller's one slow processor, seen with curl's eyes. Times are only
// compared with what they cannot be shorter than.

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/bmc/control/controller.h"
#include "tests/suite/bmc/control/fetch.h"

namespace bmc {
namespace {

Controller slow(std::vector<std::string> further) {
  further.insert(further.begin(), {"--tree", SAMPLES "/rack-server", "--open"});
  return Controller(further);
}

// Leaves the connection behind, so that the next one is new.
Fetch closing(const Controller& controller) {
  Fetch fetch;
  fetch.url = "https://" + controller.https() + "/redfish/v1/";
  fetch.authority = controller.ready().certificate;
  fetch.headers = {"Connection: close"};
  return fetch;
}

TEST(SlowController, FullHandshakeTakesItsTime) {
  const Controller controller = slow({"--full-handshake-ms", "200"});
  Fetcher client;
  EXPECT_GE(client.get(closing(controller)).seconds, 0.2);
  EXPECT_EQ(controller.counters().tlsFullHandshakes, 1U);
  EXPECT_EQ(controller.counters().tlsResumptions, 0U);
}

TEST(SlowController, OfferedSessionIsSeenBeforeTheHandshakeIsPaidFor) {
  const Controller controller = slow({"--resumed-handshake-ms", "200"});
  Fetcher client;
  EXPECT_EQ(client.get(closing(controller)).status, 200);
  EXPECT_GE(client.get(closing(controller)).seconds, 0.2);
  EXPECT_EQ(controller.counters().tlsFullHandshakes, 1U);
  EXPECT_EQ(controller.counters().tlsResumptions, 1U);
}

TEST(SlowController, RequestsSideBySideAreDoneOneAfterAnother) {
  const Controller controller = slow({"--request-ms", "100"});
  const Fetch fetch = closing(controller);
  const std::vector<FetchResult> all = fetchTogether({fetch, fetch, fetch});
  EXPECT_GE(std::max({all[0].seconds, all[1].seconds, all[2].seconds}), 0.3);
}

TEST(SlowController, RoundTripsOfTheNetworkAreNoWork) {
  const Controller controller = slow({"--round-trip-ms", "100"});
  Fetcher client;
  Fetch fetch = closing(controller);
  fetch.headers.clear();
  EXPECT_GE(client.get(fetch).seconds, 0.3);  // TCP, TLS, answer.
  EXPECT_GE(client.get(fetch).seconds, 0.1);
}

}  // namespace
}  // namespace bmc
