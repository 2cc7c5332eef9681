#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include <csignal>
#include <ctime>

#include "suite/http/network_transport.h"
#include "suite/platform/interrupt.h"
#include "tests/suite/http/scripted_server.h"
#include "tests/suite/http/transport_client.h"

namespace http {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

// Each body runs in a child process: the mark of an interrupt is for good.

// Sends the signal to the thread of the test. One to the process could come
// to a server's thread and end a wait of the server instead.
void interrupt(pthread_t thread) { pthread_kill(thread, SIGTERM); }

bool endsTheWait() {
  platform::installInterruptHandlers();
  ScriptedServer server([waiting = pthread_self()](Peer& peer) {
    peer.readRequest();
    interrupt(waiting);
    peer.hang();
  });
  const auto transport = makeNetworkTransport(plainOptions(server.port()));
  transport->start(get());
  const base::Clock::time_point end = base::Clock::now() + seconds(30);
  const bool answered = transport->next(end).has_value();
  return !answered && base::Clock::now() < end && platform::interrupted();
}

bool isToldOnce() {
  platform::installInterruptHandlers();
  raise(SIGTERM);
  ScriptedServer server([](Peer& peer) {
    peer.readRequest();
    if (peer.pause(milliseconds(100))) {
      peer.write(httpAnswer(204, ""));
    }
  });
  const auto transport = makeNetworkTransport(plainOptions(server.port()));
  Request logout = get("/redfish/v1/SessionService/Sessions/1");
  logout.method = Method::kDelete;
  transport->start(logout);
  const bool told =
      !transport->next(base::Clock::now() + seconds(5)).has_value();
  return told && nextAnswer(*transport).status == 204;
}

bool isDeferred() {
  platform::installInterruptHandlers();
  ScriptedServer server([waiting = pthread_self()](Peer& peer) {
    peer.readRequest();
    interrupt(waiting);
    // Time in which the wait would end, were it not deferred.
    if (peer.pause(milliseconds(200)) && platform::interrupted()) {
      peer.write(httpAnswer(204, ""));
    }
  });
  const auto transport = makeNetworkTransport(plainOptions(server.port()));
  Request logout = get("/redfish/v1/SessionService/Sessions/1");
  logout.method = Method::kDelete;
  transport->deferInterrupt(true);
  transport->start(logout);
  return nextAnswer(*transport).status == 204;
}

bool spendsNoTimeInCircles() {
  platform::installInterruptHandlers();
  raise(SIGTERM);
  ScriptedServer server([](Peer& peer) { peer.hang(); });
  const auto transport = makeNetworkTransport(plainOptions(server.port()));
  transport->start(get());
  transport->next(base::Clock::now());
  const std::clock_t begin = std::clock();
  transport->next(base::Clock::now() + milliseconds(300));
  return std::clock() - begin < CLOCKS_PER_SEC / 10;
}

class CurlTransportInterrupt : public testing::Test {
 protected:
  CurlTransportInterrupt() {
    // The child starts afresh, without the threads of other tests.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
  }
};

TEST_F(CurlTransportInterrupt, EndsTheWait) {
  EXPECT_EXIT(_exit(endsTheWait() ? 0 : 1), testing::ExitedWithCode(0), "");
}

TEST_F(CurlTransportInterrupt, IsToldOnceSoThatALogoutIsAnswered) {
  EXPECT_EXIT(_exit(isToldOnce() ? 0 : 1), testing::ExitedWithCode(0), "");
}

TEST_F(CurlTransportInterrupt, IsNotToldWhileItIsDeferred) {
  EXPECT_EXIT(_exit(isDeferred() ? 0 : 1), testing::ExitedWithCode(0), "");
}

TEST_F(CurlTransportInterrupt, LaterWaitsSpendNoTimeInCircles) {
  EXPECT_EXIT(_exit(spendsNoTimeInCircles() ? 0 : 1),
              testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace http
