#include <gtest/gtest.h>

#include <chrono>

#include "suite/http/network_transport.h"
#include "tests/suite/http/stalled_resolver.h"
#include "tests/suite/http/transport_client.h"

namespace http {
namespace {

using std::chrono::milliseconds;

NetworkTransportOptions stalledOptions() {
  NetworkTransportOptions options = plainOptions(1);
  options.origin.host = StalledResolver::kName;
  return options;
}

TEST(CurlTransportResolver, StallEndsWithTheConnectTime) {
  const StalledResolver resolver;
  NetworkTransportOptions options = stalledOptions();
  options.connectTimeout = milliseconds(200);
  const base::Clock::time_point begin = base::Clock::now();
  {
    const Answer answer = ask(*makeNetworkTransport(options), get());
    EXPECT_EQ(kindOf(answer), "connect timeout");
    EXPECT_EQ(told(answer), "the host name was not resolved within 0.2 s");
  }
  EXPECT_LT(base::Clock::now() - begin, milliseconds(2000));
}

TEST(CurlTransportResolver, StallDoesNotHoldACancelOrTheEnd) {
  const StalledResolver resolver;
  const base::Clock::time_point begin = base::Clock::now();
  {
    const auto transport = makeNetworkTransport(stalledOptions());
    transport->start(get());
    EXPECT_FALSE(transport->next(begin + milliseconds(50)));
    transport->cancelAll();
    transport->start(get());
    EXPECT_FALSE(transport->next(begin + milliseconds(100)));
  }
  EXPECT_LT(base::Clock::now() - begin, milliseconds(1000));
}

}  // namespace
}  // namespace http
