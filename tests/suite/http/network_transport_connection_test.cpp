#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <set>

#include "suite/http/network_transport.h"
#include "tests/suite/http/scripted_server.h"
#include "tests/suite/http/transport_client.h"

namespace http {
namespace {

using std::chrono::milliseconds;

TEST(NetworkTransportConnections, AreKeptAndCounted) {
  ScriptedServer server(
      answering([](const std::string&) { return httpAnswer(200, "{}"); }));
  const auto transport = makeNetworkTransport(plainOptions(server.port()));
  EXPECT_FALSE(ask(*transport, get()).reusedConnection);
  EXPECT_TRUE(ask(*transport, get()).reusedConnection);
  const TransportStats stats = transport->stats();
  EXPECT_EQ(stats.requests, 2U);
  EXPECT_EQ(stats.connections, 1U);
  EXPECT_EQ(stats.bytes, 4U);
  EXPECT_EQ(server.connections(), 1);
}

TEST(NetworkTransportConnections, StayWithinTheLimit) {
  ScriptedServer server([](Peer& peer) {
    while (!peer.readRequest().empty() && peer.pause(milliseconds(20))) {
      peer.write(httpAnswer(200, kBody));
    }
  });
  NetworkTransportOptions options = plainOptions(server.port());
  options.maxConnections = 3;
  const auto transport = makeNetworkTransport(options);
  std::set<std::uint64_t> ids;
  for (int index = 0; index < 12; ++index) {
    ids.insert(transport->start(get()));
  }
  for (int index = 0; index < 12; ++index) {
    EXPECT_EQ(ids.erase(nextAnswer(*transport).id), 1U);
  }
  EXPECT_EQ(server.connections(), 3);
}

TEST(NetworkTransportConnections, FreshOneIsOpenedOnRequest) {
  ScriptedServer server(
      answering([](const std::string&) { return httpAnswer(200, "{}"); }));
  const auto transport = makeNetworkTransport(plainOptions(server.port()));
  ask(*transport, get());
  Request request = get();
  request.freshConnection = true;
  EXPECT_FALSE(ask(*transport, request).reusedConnection);
  EXPECT_EQ(server.connections(), 2);
}

TEST(NetworkTransportConnections, LoginIsSentOnceThoughItsConnectionIsReset) {
  std::atomic<int> logins{0};
  ScriptedServer server([&logins](Peer& peer) {
    while (true) {
      const std::string request = peer.readRequest();
      if (request.empty()) {
        return;
      }
      if (request.compare(0, 4, "POST") == 0) {
        ++logins;
        return;
      }
      peer.write(httpAnswer(200, kBody));
    }
  });
  const auto transport = makeNetworkTransport(plainOptions(server.port()));
  ask(*transport, get());
  Request login = get("/redfish/v1/SessionService/Sessions");
  login.method = Method::kPost;
  login.body = base::Secret("{}");
  EXPECT_EQ(kindOf(ask(*transport, login)), "unreachable");
  EXPECT_EQ(logins, 1);
}

TEST(NetworkTransportConnections, DeadOnesAreReplaced) {
  ScriptedServer server([](Peer& peer) {
    peer.readRequest();
    peer.write(httpAnswer(200, kBody));
    peer.close();
  });
  const auto transport = makeNetworkTransport(plainOptions(server.port()));
  for (int index = 0; index < 3; ++index) {
    EXPECT_EQ(ask(*transport, get()).status, 200);
  }
  EXPECT_EQ(server.connections(), 3);
}

TEST(NetworkTransportConnections, BrokenPipeDoesNotEndTheProcess) {
  const auto transport = makeNetworkTransport(plainOptions(1));
  EXPECT_EQ(raise(SIGPIPE), 0);
}

}  // namespace
}  // namespace http
