#include <gtest/gtest.h>

#include <atomic>
#include <chrono>

#include "suite/http/network_transport.h"
#include "tests/suite/http/http2_peer.h"
#include "tests/suite/http/scripted_server.h"
#include "tests/suite/http/transport_client.h"

namespace http {
namespace {

using std::chrono::milliseconds;

NetworkTransportOptions http2Options(const ScriptedServer& server) {
  NetworkTransportOptions options = tlsOptions(server.port());
  options.insecure = true;
  return options;
}

void serve(Peer& peer) {
  Http2Peer http2(peer);
  while (const std::uint32_t stream = http2.nextStream()) {
    http2.answer(stream, "{}");
  }
}

// Breaks the framing of the first answer; serves HTTP/1.1 well.
void serveBroken(Peer& peer) {
  if (peer.protocol().empty()) {
    answering([](const std::string&) { return httpAnswer(200, "{}"); })(peer);
    return;
  }
  Http2Peer http2(peer);
  const std::uint32_t stream = http2.nextStream();
  // A setting is six bytes, and belongs to no stream.
  http2.writeFrame(4, 0, stream, "x");
  peer.hang();
}

TEST(CurlTransportHttp2, IsSpokenWhereItIsOffered) {
  ScriptedServer server(serve, tlsForHttp2());
  const auto transport = makeNetworkTransport(http2Options(server));
  const Answer answer = ask(*transport, get());
  EXPECT_EQ(told(answer), "no failure");
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(answer.body, "{}");
}

TEST(CurlTransportHttp2, RequestsShareTheConnectionOnceItIsKnown) {
  ScriptedServer server(serve, tlsForHttp2());
  const auto transport = makeNetworkTransport(http2Options(server));
  ask(*transport, get());
  for (int index = 0; index < 8; ++index) {
    transport->start(get());
  }
  for (int index = 0; index < 8; ++index) {
    EXPECT_TRUE(nextAnswer(*transport).reusedConnection);
  }
  EXPECT_EQ(server.connections(), 1);
}

TEST(CurlTransportHttp2, AnswersMayOvertakeEachOther) {
  std::atomic<bool> overtaken{false};
  ScriptedServer server(
      [&overtaken](Peer& peer) {
        Http2Peer http2(peer);
        http2.answer(http2.nextStream(), "{}");
        const std::uint32_t slow = http2.nextStream();
        http2.answer(http2.nextStream(), "second");
        while (!overtaken && peer.pause(milliseconds(5))) {
        }
        http2.answer(slow, "first");
        peer.hang();
      },
      tlsForHttp2());
  const auto transport = makeNetworkTransport(http2Options(server));
  ask(*transport, get());
  const std::uint64_t first = transport->start(get());
  const std::uint64_t second = transport->start(get());
  EXPECT_EQ(nextAnswer(*transport).id, second);
  overtaken = true;
  EXPECT_EQ(nextAnswer(*transport).id, first);
}

TEST(CurlTransportHttp2, BrokenFramingIsTold) {
  ScriptedServer server(serveBroken, tlsForHttp2());
  const auto transport = makeNetworkTransport(http2Options(server));
  const Answer answer = ask(*transport, get());
  EXPECT_TRUE(answer.http2Error);
  EXPECT_EQ(kindOf(answer), "unreachable");
}

TEST(CurlTransportHttp2, CanBeGivenUpAfterAFailure) {
  ScriptedServer server(serveBroken, tlsForHttp2());
  const auto transport = makeNetworkTransport(http2Options(server));
  EXPECT_TRUE(ask(*transport, get()).http2Error);
  transport->disableHttp2();
  EXPECT_EQ(told(ask(*transport, get())), "no failure");
}

TEST(CurlTransportHttp2, IsNotSpokenOnAKeptConnectionOnceGivenUp) {
  std::string protocol = "none";
  ScriptedServer server(
      [&protocol](Peer& peer) {
        protocol = peer.protocol();
        protocol.empty() ? serveBroken(peer) : serve(peer);
      },
      tlsForHttp2());
  const auto transport = makeNetworkTransport(http2Options(server));
  ask(*transport, get());
  EXPECT_EQ(protocol, "h2");
  transport->disableHttp2();
  EXPECT_FALSE(ask(*transport, get()).reusedConnection);
  EXPECT_EQ(protocol, "");
}

}  // namespace
}  // namespace http
