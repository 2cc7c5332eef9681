#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <string>
#include <string_view>

#include "suite/http/network_transport.h"
#include "suite/platform/interrupt.h"
#include "tests/suite/http/http2_peer.h"
#include "tests/suite/http/scripted_server.h"
#include "tests/suite/http/transport_client.h"

namespace http {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

// Longer than any test here waits; the floods end by themselves.
constexpr milliseconds kFlood = seconds(8);
constexpr milliseconds kMuchLess = seconds(4);
constexpr milliseconds kTimeout{150};

/// A frame of HTTP/2 that carries no answer on.
struct Frame {
  const char* name;
  std::uint8_t type;
  bool ofStream;
  std::string_view payload;
};

constexpr std::string_view kIncrement("\0\0\0\1", 4);
constexpr std::string_view kPriority("\0\0\0\0\1", 5);

constexpr Frame kWindowUpdate{"WindowUpdate", 8, false, kIncrement};

const Frame kFrames[] = {
    {"EmptyData", 0, true, ""},
    {"Priority", 2, true, kPriority},
    {"Settings", 4, false, ""},
    {"Ping", 6, false, "12345678"},
    kWindowUpdate,
    {"WindowUpdateOfStream", 8, true, kIncrement},
    {"Unknown", 77, false, ""},
};

void flood(Http2Peer& http2, const Frame& frame, std::uint32_t stream) {
  http2.flood(frame.type, 0, frame.ofStream ? stream : 0, frame.payload,
              kFlood);
}

// A script that begins an answer and never goes on with it.
ScriptedServer::Script answerWith(const Frame& frame) {
  return [frame](Peer& peer) {
    Http2Peer http2(peer);
    const std::uint32_t stream = http2.nextStream();
    http2.beginAnswer(stream);
    flood(http2, frame, stream);
  };
}

NetworkTransportOptions floodOptions(const ScriptedServer& server) {
  NetworkTransportOptions options = tlsOptions(server.port());
  options.insecure = true;
  return options;
}

Request briefly() {
  Request request = get();
  request.timeout = kTimeout;
  return request;
}

class CurlTransportFloods : public testing::Test {};
class CurlTransportFlood : public testing::TestWithParam<Frame> {};

TEST_P(CurlTransportFlood, EndsWithTheTimeOfTheRequest) {
  ScriptedServer server(answerWith(GetParam()), tlsForHttp2());
  const auto transport = makeNetworkTransport(floodOptions(server));
  const base::Clock::time_point begin = base::Clock::now();
  const Answer answer = ask(*transport, briefly());
  EXPECT_LT(base::Clock::now() - begin, kMuchLess);
  EXPECT_NE(told(answer), "no failure");
}

TEST_F(CurlTransportFloods, OfFramesAreATimeout) {
  ScriptedServer server(answerWith(kWindowUpdate), tlsForHttp2());
  const auto transport = makeNetworkTransport(floodOptions(server));
  EXPECT_EQ(kindOf(ask(*transport, briefly())), "read timeout");
}

TEST_F(CurlTransportFloods, OfFramesEndWithTheWait) {
  ScriptedServer server(answerWith(kWindowUpdate), tlsForHttp2());
  const auto transport = makeNetworkTransport(floodOptions(server));
  transport->start(get());
  const base::Clock::time_point begin = base::Clock::now();
  transport->next(begin + kTimeout);
  EXPECT_LT(base::Clock::now() - begin, kMuchLess);
}

TEST_F(CurlTransportFloods, OfFramesHoldNoOtherConnection) {
  std::atomic<bool> flooded{false};
  ScriptedServer server(
      [&flooded](Peer& peer) {
        if (!flooded.exchange(true)) {
          answerWith(kWindowUpdate)(peer);
          return;
        }
        Http2Peer http2(peer);
        http2.answer(http2.nextStream(), "{}");
        peer.hang();
      },
      tlsForHttp2());
  const auto transport = makeNetworkTransport(floodOptions(server));
  ask(*transport, briefly());
  EXPECT_EQ(told(ask(*transport, get())), "no failure");
}

// In a child process: the mark of an interrupt is for good.
bool endsWithTheInterrupt() {
  platform::installInterruptHandlers();
  ScriptedServer server(
      [waiting = pthread_self()](Peer& peer) {
        Http2Peer http2(peer);
        const std::uint32_t stream = http2.nextStream();
        pthread_kill(waiting, SIGTERM);
        http2.beginAnswer(stream);
        flood(http2, kWindowUpdate, stream);
      },
      tlsForHttp2());
  const auto transport = makeNetworkTransport(floodOptions(server));
  transport->start(get());
  const base::Clock::time_point begin = base::Clock::now();
  transport->next(begin + seconds(30));
  return base::Clock::now() - begin < kMuchLess;
}

TEST_F(CurlTransportFloods, OfFramesEndWithTheInterrupt) {
  // The child starts afresh, without the threads of other tests.
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(_exit(endsWithTheInterrupt() ? 0 : 1), testing::ExitedWithCode(0),
              "");
}

INSTANTIATE_TEST_SUITE_P(OfFrames, CurlTransportFlood,
                         testing::ValuesIn(kFrames), [](const auto& frame) {
                           return std::string(frame.param.name);
                         });

}  // namespace
}  // namespace http
