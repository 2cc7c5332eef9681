#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "suite/http/network_transport.h"
#include "tests/suite/http/scripted_server.h"
#include "tests/suite/http/transport_client.h"

namespace http {
namespace {

using std::chrono::milliseconds;
using testing::StartsWith;

TEST(NetworkTransportFailure, WrongLengthIsATruncatedAnswer) {
  const Answer answer =
      answerTo("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{}");
  EXPECT_EQ(kindOf(answer), "content");
  EXPECT_EQ(told(answer), "the connection ended in mid-answer");
  EXPECT_EQ(answer.status, 0);
  EXPECT_EQ(answer.body, "");
}

TEST(NetworkTransportFailure, CutChunkIsATruncatedAnswer) {
  EXPECT_EQ(told(answerTo("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n"
                          "\r\n20\r\n{}")),
            "the connection ended in mid-answer");
}

TEST(NetworkTransportFailure, MalformedChunkIsBadContent) {
  EXPECT_EQ(kindOf(answerTo("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n"
                            "\r\nxyz\r\n{}")),
            "content");
}

TEST(NetworkTransportFailure, NegativeLengthIsBadContent) {
  EXPECT_EQ(kindOf(answerTo("HTTP/1.1 200 OK\r\nContent-Length: -5\r\n\r\n{}")),
            "content");
}

TEST(NetworkTransportFailure, EndBeforeAnAnswerIsUnreachable) {
  const Answer answer = answerTo("");
  EXPECT_EQ(kindOf(answer), "unreachable");
  EXPECT_THAT(told(answer),
              StartsWith("the connection ended before an answer"));
}

TEST(NetworkTransportFailure, ResetIsUnreachable) {
  ScriptedServer server([](Peer& peer) {
    peer.readRequest();
    peer.reset();
  });
  EXPECT_EQ(
      kindOf(ask(*makeNetworkTransport(plainOptions(server.port())), get())),
      "unreachable");
}

TEST(NetworkTransportFailure, ResetInTheBodyIsATruncatedAnswer) {
  ScriptedServer server([](Peer& peer) {
    peer.readRequest();
    peer.write("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n{}");
    // Lets the client read before the reset takes the bytes away.
    peer.pause(milliseconds(100));
    peer.reset();
  });
  EXPECT_EQ(
      told(ask(*makeNetworkTransport(plainOptions(server.port())), get())),
      "the connection ended in mid-answer");
}

TEST(NetworkTransportFailure, AnswerThatIsNoHttpIsNoRedfish) {
  const Answer answer = answerTo("220 mail.example ready\r\n");
  EXPECT_EQ(kindOf(answer), "no redfish");
  EXPECT_EQ(told(answer), "the answer is not HTTP");
}

TEST(NetworkTransportFailure, RefusedConnectionIsUnreachable) {
  std::uint16_t port = 0;
  {
    const ScriptedServer server([](Peer&) {});
    port = server.port();
  }
  const Answer answer = ask(*makeNetworkTransport(plainOptions(port)), get());
  EXPECT_EQ(kindOf(answer), "unreachable");
  EXPECT_EQ(base::describe(*answer.failure),
            "127.0.0.1:" + std::to_string(port) +
                ": /redfish/v1/Systems: the connection was refused; check the "
                "port, and that the Redfish service is switched on");
}

TEST(NetworkTransportFailure, Ipv6AddressIsAsked) {
  NetworkTransportOptions options = plainOptions(1);
  options.origin.host = "::1";
  const Answer answer = ask(*makeNetworkTransport(options), get());
  // Where there is no IPv6 there is no way to it, which is as good.
  EXPECT_EQ(kindOf(answer), "unreachable");
  EXPECT_EQ(answer.failure->address, "[::1]:1");
}

TEST(NetworkTransportFailure, UnknownNameIsNotResolved) {
  NetworkTransportOptions options = plainOptions(1);
  options.origin.host = "no-such-host.invalid";
  options.connectTimeout = milliseconds(8000);
  const Answer answer = ask(*makeNetworkTransport(options), get());
  EXPECT_EQ(kindOf(answer), "name");
}

TEST(NetworkTransportFailure, BadHostIsToldByTheAnswer) {
  NetworkTransportOptions options = plainOptions(1);
  options.origin.host = "bmc/evil";
  const auto transport = makeNetworkTransport(options);
  const std::uint64_t id = transport->start(get());
  const Answer answer = nextAnswer(*transport);
  EXPECT_EQ(answer.id, id);
  EXPECT_EQ(kindOf(answer), "name");
}

TEST(NetworkTransportTime, SilentServerEndsWithTheRequestsTime) {
  ScriptedServer server([](Peer& peer) { peer.hang(); });
  Request request = get();
  request.timeout = milliseconds(200);
  const Answer answer =
      ask(*makeNetworkTransport(plainOptions(server.port())), request);
  EXPECT_EQ(kindOf(answer), "read timeout");
  EXPECT_EQ(told(answer), "no whole answer within 0.2 s");
}

TEST(NetworkTransportTime, TrickleEndsWithTheRequestsTime) {
  ScriptedServer server([](Peer& peer) {
    peer.readRequest();
    while (peer.write("H") && peer.pause(milliseconds(20))) {
    }
  });
  Request request = get();
  request.timeout = milliseconds(300);
  const base::Clock::time_point begin = base::Clock::now();
  EXPECT_NE(
      kindOf(ask(*makeNetworkTransport(plainOptions(server.port())), request)),
      "none");
  EXPECT_LT(base::Clock::now() - begin, milliseconds(2000));
}

TEST(NetworkTransportTime, TrickledBodyEndsWithTheRequestsTime) {
  ScriptedServer server([](Peer& peer) {
    peer.readRequest();
    peer.write("HTTP/1.1 200 OK\r\n\r\n");
    while (peer.write("{") && peer.pause(milliseconds(20))) {
    }
  });
  Request request = get();
  request.timeout = milliseconds(300);
  EXPECT_EQ(
      kindOf(ask(*makeNetworkTransport(plainOptions(server.port())), request)),
      "read timeout");
}

TEST(NetworkTransportTime, RequestThatWaitsForAConnectionHasItsTimeToo) {
  ScriptedServer server([](Peer& peer) { peer.hang(); });
  NetworkTransportOptions options = plainOptions(server.port());
  options.maxConnections = 1;
  const auto transport = makeNetworkTransport(options);
  Request patient = get();
  patient.timeout = milliseconds(5000);
  transport->start(patient);
  Request hasty = get();
  hasty.timeout = milliseconds(200);
  const std::uint64_t id = transport->start(hasty);
  const base::Clock::time_point begin = base::Clock::now();
  const Answer answer = nextAnswer(*transport);
  EXPECT_EQ(answer.id, id);
  EXPECT_EQ(told(answer), "no connection became free within 0.2 s");
  EXPECT_LT(base::Clock::now() - begin, milliseconds(2000));
}

TEST(NetworkTransportTime, NextReturnsEmptyHandedWhenItsTimeIsUp) {
  ScriptedServer server([](Peer& peer) { peer.hang(); });
  const auto transport = makeNetworkTransport(plainOptions(server.port()));
  transport->start(get());
  const base::Clock::time_point begin = base::Clock::now();
  EXPECT_FALSE(transport->next(begin + milliseconds(100)));
  EXPECT_GE(base::Clock::now() - begin, milliseconds(100));
  EXPECT_LT(base::Clock::now() - begin, milliseconds(1000));
}

TEST(NetworkTransportTime, CancelAndDestructionDoNotWait) {
  ScriptedServer server([](Peer& peer) { peer.hang(); });
  const base::Clock::time_point begin = base::Clock::now();
  {
    const auto transport = makeNetworkTransport(plainOptions(server.port()));
    for (int index = 0; index < 6; ++index) {
      transport->start(get());
    }
    EXPECT_FALSE(transport->next(base::Clock::now() + milliseconds(50)));
    transport->cancelAll();
    EXPECT_FALSE(transport->next(base::Clock::now() + milliseconds(5000)));
    transport->start(get());
    EXPECT_FALSE(transport->next(base::Clock::now() + milliseconds(50)));
  }
  EXPECT_LT(base::Clock::now() - begin, milliseconds(1000));
}

}  // namespace
}  // namespace http
