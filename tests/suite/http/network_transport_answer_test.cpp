#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "suite/http/network_transport.h"
#include "tests/bmc/wire/gzip.h"
#include "tests/suite/http/scripted_server.h"
#include "tests/suite/http/transport_client.h"

namespace http {
namespace {

using testing::HasSubstr;

TEST(NetworkTransportAnswer, CarriesStatusHeadersAndBody) {
  const Answer answer =
      answerTo(httpAnswer(201, kBody,
                          "Location: /redfish/v1/S/1\r\nX-Auth-Token: abc\r\n"
                          "Retry-After: 3\r\n"));
  EXPECT_EQ(told(answer), "no failure");
  EXPECT_EQ(answer.status, 201);
  EXPECT_EQ(answer.location, "/redfish/v1/S/1");
  EXPECT_EQ(answer.authToken.text(), "abc");
  EXPECT_EQ(answer.retryAfter, "3");
  EXPECT_EQ(answer.body, kBody);
}

TEST(NetworkTransportAnswer, InterimAnswersAreSkipped) {
  const Answer answer = answerTo(
      "HTTP/1.1 100 Continue\r\nLocation: /x\r\n\r\n" + httpAnswer(200, kBody));
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(answer.location, "");
}

// It continues no line of this answer, and none of the answer before.
TEST(NetworkTransportAnswer, FirstHeaderLineMayBeginWithABlank) {
  ScriptedServer server([](Peer& peer) {
    while (peer.readRequest().find("/Systems/1 ") == std::string::npos) {
      if (!peer.write(httpAnswer(200, kBody, "Location: /redfish/v1/S\r\n"))) {
        return;
      }
    }
    peer.write(
        "HTTP/1.1 200 OK\r\n  Location: /redfish/v1/T\r\n"
        "Content-Length: 2\r\n\r\n{}");
  });
  const auto transport = makeNetworkTransport(plainOptions(server.port()));
  EXPECT_EQ(ask(*transport, get()).body, kBody);
  EXPECT_NE(ask(*transport, get("/redfish/v1/Systems/1")).body, kBody);
  EXPECT_EQ(ask(*transport, get()).body, kBody);
}

TEST(NetworkTransportAnswer, ErrorStatusIsNoFailure) {
  const Answer answer = answerTo(httpAnswer(503, "busy"));
  EXPECT_FALSE(answer.failure);
  EXPECT_EQ(answer.status, 503);
  EXPECT_EQ(answer.body, "busy");
}

TEST(NetworkTransportAnswer, RedirectIsNotFollowed) {
  const Answer answer =
      answerTo(httpAnswer(302, "", "Location: https://192.0.2.1/\r\n"));
  EXPECT_EQ(answer.status, 302);
  EXPECT_EQ(answer.location, "https://192.0.2.1/");
}

TEST(NetworkTransportAnswer, ChunkedBodyIsJoined) {
  EXPECT_EQ(answerTo("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"
                     "2\r\n{}\r\n3\r\n   \r\n0\r\nLocation: /t\r\n\r\n")
                .body,
            "{}   ");
}

TEST(NetworkTransportAnswer, BodyMayEndWithTheConnection) {
  EXPECT_EQ(answerTo("HTTP/1.1 200 OK\r\n\r\n{}").body, "{}");
}

TEST(NetworkTransportAnswer, GzipIsDecoded) {
  const Answer answer =
      answerTo(httpAnswer(200, bmc::gzip(kBody), "Content-Encoding: gzip\r\n"));
  EXPECT_EQ(told(answer), "no failure");
  EXPECT_EQ(answer.body, kBody);
}

TEST(NetworkTransportAnswer, WrongCompressionIsTold) {
  const Answer answer =
      answerTo(httpAnswer(200, kBody, "Content-Encoding: gzip\r\n"));
  EXPECT_TRUE(answer.badEncoding);
  EXPECT_EQ(kindOf(answer), "content");
  EXPECT_EQ(told(answer), "the answer is not compressed as it says");
}

TEST(NetworkTransportAnswer, WithoutCompressionTheBodyIsTakenAsItIs) {
  std::string sent;
  ScriptedServer server([&sent](Peer& peer) {
    sent = peer.readRequest();
    peer.write(httpAnswer(200, kBody, "Content-Encoding: gzip\r\n"));
  });
  const auto transport = makeNetworkTransport(plainOptions(server.port()));
  transport->disableCompression();
  const Answer answer = ask(*transport, get());
  EXPECT_EQ(answer.body, kBody);
  EXPECT_THAT(sent, HasSubstr("\r\nAccept-Encoding: identity\r\n"));
}

// A few kilobytes can stand for terabytes with five layers, all of which are
// decoded within one call, without a look at the clock.
TEST(NetworkTransportLimits, NestedCompressionFailsBeforeItIsDecoded) {
  const std::string nested = bmc::gzip(bmc::gzip(std::string(1 << 20, ' ')));
  for (const char* header :
       {"Content-Encoding: gzip, gzip\r\n",
        "Content-Encoding: gzip\r\nContent-Encoding: gzip\r\n",
        "Content-Encoding: deflate\r\n"}) {
    const Answer answer = answerTo(httpAnswer(200, nested, header));
    EXPECT_EQ(told(answer),
              "the answer is compressed more than once, or not by gzip");
    EXPECT_TRUE(answer.badEncoding);
    EXPECT_EQ(answer.body, "");
  }
}

TEST(NetworkTransportLimits, LargestBodyArrives) {
  const std::string body(kMaxBodyBytes, ' ');
  EXPECT_EQ(answerTo(httpAnswer(200, body)).body.size(), kMaxBodyBytes);
}

TEST(NetworkTransportLimits, LargerBodyFails) {
  const std::string body(kMaxBodyBytes + 1, ' ');
  const Answer announced = answerTo(httpAnswer(200, body));
  EXPECT_EQ(kindOf(announced), "content");
  EXPECT_EQ(told(announced), "the answer is larger than 16 MiB");
  EXPECT_EQ(announced.status, 0);
  EXPECT_EQ(told(answerTo("HTTP/1.1 200 OK\r\n\r\n" + body)),
            "the answer is larger than 16 MiB");
}

TEST(NetworkTransportLimits, BodiesThatComeTogetherAreLimited) {
  ScriptedServer server([](Peer& peer) {
    peer.readRequest();
    peer.write("HTTP/1.1 200 OK\r\n\r\n" + std::string(kMaxBodyBytes, ' '));
    peer.hang();
  });
  auto options = plainOptions(server.port());
  options.maxConnections = 2;
  const auto transport = makeNetworkTransport(options);
  transport->start(get());
  transport->start(get());
  // Neither body ends, and together they are 32 MiB.
  EXPECT_EQ(told(nextAnswer(*transport)),
            "the answers that came together are larger than 24 MiB");
}

TEST(NetworkTransportLimits, BodiesOneAfterAnotherAreNot) {
  ScriptedServer server([](Peer& peer) {
    while (!peer.readRequest().empty()) {
      peer.write(httpAnswer(200, std::string(kMaxBodyBytes, ' ')));
    }
  });
  const auto transport = makeNetworkTransport(plainOptions(server.port()));
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(ask(*transport, get()).body.size(), kMaxBodyBytes);
  }
}

TEST(NetworkTransportLimits, BodyWithoutEndFails) {
  ScriptedServer server([](Peer& peer) {
    peer.readRequest();
    peer.write("HTTP/1.1 200 OK\r\n\r\n");
    while (peer.write(std::string(65536, ' '))) {
    }
  });
  EXPECT_EQ(
      told(ask(*makeNetworkTransport(plainOptions(server.port())), get())),
      "the answer is larger than 16 MiB");
}

TEST(NetworkTransportLimits, CompressedBombFails) {
  const std::string bomb = bmc::gzip(std::string(32 << 20, ' '));
  ASSERT_LT(bomb.size(), 1U << 20);
  EXPECT_EQ(told(answerTo(httpAnswer(200, bomb, "Content-Encoding: gzip\r\n"))),
            "the answer is larger than 16 MiB");
}

TEST(NetworkTransportLimits, ManyHeadersFail) {
  std::string headers;
  while (headers.size() <= kMaxHeaderBytes) {
    headers += "X-Filler: 0123456789\r\n";
  }
  const Answer answer = answerTo(httpAnswer(200, kBody, headers));
  EXPECT_EQ(kindOf(answer), "content");
  EXPECT_EQ(told(answer), "the headers of the answer are larger than 64 KiB");
}

TEST(NetworkTransportLimits, LongHeaderFails) {
  for (const std::size_t size : {kMaxHeaderBytes, kMaxHeaderBytes * 4}) {
    const Answer answer = answerTo(
        httpAnswer(200, kBody, "X-Filler: " + std::string(size, 'a') + "\r\n"));
    EXPECT_EQ(kindOf(answer), "content");
    EXPECT_EQ(told(answer), "the headers of the answer are larger than 64 KiB");
  }
}

TEST(NetworkTransportLimits, InterimAnswersWithoutEndFail) {
  ScriptedServer server([](Peer& peer) {
    peer.readRequest();
    while (peer.write("HTTP/1.1 102 Processing\r\n\r\n")) {
    }
  });
  EXPECT_EQ(
      told(ask(*makeNetworkTransport(plainOptions(server.port())), get())),
      "the headers of the answer are larger than 64 KiB");
}

}  // namespace
}  // namespace http
