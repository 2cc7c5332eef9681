#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>

#include "suite/http/network_transport.h"
#include "tests/bmc/wire/certificate.h"
#include "tests/suite/http/scripted_server.h"
#include "tests/suite/http/transport_client.h"

namespace http {
namespace {

using std::chrono::milliseconds;
using testing::HasSubstr;

ScriptedServer::Script serving() {
  return answering([](const std::string&) { return httpAnswer(200, "{}"); });
}

TEST(NetworkTransportTls, OldVersionsAreRefused) {
  TlsWish tls = tlsWith(bmc::makeCertificate({}));
  tls.lowestVersion = TLS1_VERSION;
  tls.highestVersion = TLS1_1_VERSION;
  ScriptedServer server(serving(), tls);
  NetworkTransportOptions options = tlsOptions(server.port());
  options.insecure = true;
  const Answer answer = ask(*makeNetworkTransport(options), get());
  EXPECT_EQ(kindOf(answer), "tls");
  EXPECT_EQ(told(answer), "the server offers no TLS version from 1.2 on");
}

TEST(NetworkTransportTls, Version12IsAccepted) {
  TlsWish tls = tlsWith(bmc::makeCertificate({}));
  tls.highestVersion = TLS1_2_VERSION;
  ScriptedServer server(serving(), tls);
  NetworkTransportOptions options = tlsOptions(server.port());
  options.insecure = true;
  EXPECT_EQ(told(ask(*makeNetworkTransport(options), get())), "no failure");
}

TEST(NetworkTransportTls, Version13AloneIsEnough) {
  TlsWish tls = tlsWith(bmc::makeCertificate({}));
  tls.lowestVersion = TLS1_3_VERSION;
  ScriptedServer server(serving(), tls);
  NetworkTransportOptions options = tlsOptions(server.port());
  options.insecure = true;
  EXPECT_EQ(told(ask(*makeNetworkTransport(options), get())), "no failure");
}

TEST(NetworkTransportTls, PlainHttpOnTheHttpsPortIsTold) {
  ScriptedServer server([](Peer& peer) {
    peer.read(1);
    peer.write("HTTP/1.1 400 Bad Request\r\n\r\n");
    peer.close();
  });
  const Answer answer =
      ask(*makeNetworkTransport(tlsOptions(server.port())), get());
  EXPECT_EQ(kindOf(answer), "tls");
  EXPECT_EQ(told(answer), "the port does not speak TLS");
}

TEST(NetworkTransportTls, HttpsOnTheHttpPortIsTold) {
  ScriptedServer server([](Peer& peer) {
    peer.readRequest();
    peer.write({"\x15\x03\x03\x00\x02\x02\x46", 7});  // A fatal alert.
    peer.close();
  });
  const Answer answer =
      ask(*makeNetworkTransport(plainOptions(server.port())), get());
  EXPECT_EQ(kindOf(answer), "no redfish");
  EXPECT_EQ(told(answer), "the answer is not HTTP");
}

TEST(NetworkTransportTls, HttpsPortThatResetsHttpIsUnreachable) {
  ScriptedServer server(serving(), tlsWith(bmc::makeCertificate({})));
  const Answer answer =
      ask(*makeNetworkTransport(plainOptions(server.port())), get());
  EXPECT_EQ(kindOf(answer), "unreachable");
  EXPECT_THAT(answer.failure->remedy, HasSubstr("port"));
}

TEST(NetworkTransportTls, HandshakeThatStallsEndsWithTheConnectTime) {
  ScriptedServer server([](Peer& peer) { peer.hang(); });
  NetworkTransportOptions options = tlsOptions(server.port());
  options.connectTimeout = milliseconds(200);
  const Answer answer = ask(*makeNetworkTransport(options), get());
  EXPECT_EQ(kindOf(answer), "connect timeout");
  EXPECT_EQ(told(answer), "the TLS handshake did not end within 0.2 s");
}

TEST(NetworkTransportTls, HandshakeThatEndsIsATlsFailure) {
  ScriptedServer server([](Peer& peer) {
    peer.read(1);
    peer.close();
  });
  EXPECT_EQ(
      kindOf(ask(*makeNetworkTransport(tlsOptions(server.port())), get())),
      "tls");
}

// The answer over TLS of a server that ends the connection by its own script.
Answer answerOf(const ScriptedServer::Script& script) {
  ScriptedServer server(script, tlsWith(bmc::makeCertificate({})));
  NetworkTransportOptions options = tlsOptions(server.port());
  options.insecure = true;
  return ask(*makeNetworkTransport(options), get());
}

TEST(NetworkTransportTls, BodyMayEndWithTheConnection) {
  EXPECT_EQ(answerOf([](Peer& peer) {
              peer.readRequest();
              peer.write("HTTP/1.1 200 OK\r\n\r\n{}");
              peer.close();
            }).body,
            "{}");
}

TEST(NetworkTransportTls, BodyMayEndWithoutACloseNotify) {
  const Answer answer = answerOf([](Peer& peer) {
    peer.readRequest();
    peer.write("HTTP/1.1 200 OK\r\n\r\n{}");
  });
  EXPECT_EQ(told(answer), "no failure");
  EXPECT_EQ(answer.body, "{}");
}

TEST(NetworkTransportTls, CutBodyIsATruncatedAnswer) {
  EXPECT_EQ(told(answerOf([](Peer& peer) {
              peer.readRequest();
              peer.write("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{}");
            })),
            "the connection ended in mid-answer");
}

TEST(NetworkTransportTls, EndBeforeAnAnswerIsUnreachable) {
  EXPECT_EQ(kindOf(answerOf([](Peer& peer) { peer.readRequest(); })),
            "unreachable");
}

TEST(NetworkTransportTls, SessionsAreTakenUpAgain) {
  std::atomic<int> resumed{0};
  ScriptedServer server(
      [&resumed](Peer& peer) {
        if (peer.resumed()) {
          ++resumed;
        }
        peer.readRequest();
        peer.write(httpAnswer(200, "{}", "Connection: close\r\n"));
        peer.close();
      },
      tlsWith(bmc::makeCertificate({})));
  NetworkTransportOptions options = tlsOptions(server.port());
  options.insecure = true;
  const auto transport = makeNetworkTransport(options);
  ask(*transport, get());
  ask(*transport, get());
  EXPECT_EQ(server.connections(), 2);
  EXPECT_EQ(resumed, 1);
}

TEST(NetworkTransportTls, ConnectionsAreKept) {
  ScriptedServer server(serving(), tlsWith(bmc::makeCertificate({})));
  NetworkTransportOptions options = tlsOptions(server.port());
  options.insecure = true;
  const auto transport = makeNetworkTransport(options);
  EXPECT_FALSE(ask(*transport, get()).reusedConnection);
  EXPECT_TRUE(ask(*transport, get()).reusedConnection);
  EXPECT_EQ(server.connections(), 1);
}

TEST(NetworkTransportTls, ConnectionsOpenedTogetherTakeUpOneSession) {
  ScriptedServer server(serving(), tlsWith(bmc::makeCertificate({})));
  NetworkTransportOptions options = tlsOptions(server.port());
  options.insecure = true;
  options.maxConnections = 16;
  const auto transport = makeNetworkTransport(options);
  constexpr int kRequests = 64;
  for (int i = 0; i < kRequests; ++i) {
    transport->start(get());
  }
  for (int i = 0; i < kRequests; ++i) {
    EXPECT_EQ(told(nextAnswer(*transport)), "no failure");
  }
  EXPECT_GT(server.connections(), 2);
  EXPECT_EQ(transport->stats().resumed + 1, transport->stats().connections);
}

}  // namespace
}  // namespace http
