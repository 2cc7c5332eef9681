// The generation of a controller, with a UDP peer on the loopback where there
// is no Redfish service.
#include "suite/redfish/generation.h"

#include <gtest/gtest.h>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/udp.hpp>
#include <thread>

#include "tests/suite/redfish/service_fixture.h"

namespace {

using base::FailureKind;
using boost::asio::ip::udp;
using redfish::Generation;

// A controller that answers each datagram with the next of its answers; an
// empty one is silence.
class UdpPeer {
 public:
  explicit UdpPeer(std::vector<std::string> answers)
      : socket_(context_, udp::endpoint(udp::v4(), 0)),
        thread_([this, answers = std::move(answers)] { serve(answers); }) {}
  ~UdpPeer() {
    // Wakes the thread, which leaves when its answers are used up.
    udp::socket waker(context_, udp::v4());
    done_ = true;
    waker.send_to(
        boost::asio::buffer("", 0),
        udp::endpoint(boost::asio::ip::address_v4::loopback(), port()));
    thread_.join();
  }
  std::uint16_t port() { return socket_.local_endpoint().port(); }
  int asked() const { return asked_; }

 private:
  void serve(const std::vector<std::string>& answers) {
    std::array<char, 512> buffer{};
    udp::endpoint sender;
    while (true) {
      socket_.receive_from(boost::asio::buffer(buffer), sender);
      if (done_) {
        return;
      }
      const auto place = static_cast<std::size_t>(asked_++);
      if (place < answers.size() && !answers[place].empty()) {
        socket_.send_to(boost::asio::buffer(answers[place]), sender);
      }
    }
  }
  boost::asio::io_context context_;
  udp::socket socket_;
  std::atomic<bool> done_{false};
  std::atomic<int> asked_{0};
  std::thread thread_;
};

const std::string kIpmi20(
    "\x06\x00\xff\x07\x00\x00\x00\x00\x00\x00\x00\x00\x00\x10"
    "\x81\x1c\x63\x20\x00\x38\x00\x01\x84\x04\x02\x00\x00\x00\x00\x1d",
    30);
const std::string kIpmi15(
    "\x06\x00\xff\x07\x00\x00\x00\x00\x00\x00\x00\x00\x00\x10"
    "\x81\x1c\x63\x20\x00\x38\x00\x01\x04\x04\x00\x00\x00\x00\x00\x9f",
    30);
const std::string kRefused(
    "\x06\x00\xff\x07\x00\x00\x00\x00\x00\x00\x00\x00\x00\x08"
    "\x81\x1c\x63\x20\x00\x38\xcc\xdc",
    22);

struct GenerationProbe : ScriptedService, testing::Test {
  redfish::Probed probe(std::uint16_t port) {
    options.lan.host = "127.0.0.1";
    options.lan.port = port;
    return start().probe();
  }
  void rootFails(base::FailureKind kind) {
    script->on("GET /redfish/v1/", failureOf(kind));
  }
};

TEST_F(GenerationProbe, ServiceWithSystemsIsTheNewest) {
  script->on("GET /redfish/v1/", 200, kRootBody);
  EXPECT_EQ(probe(1).generation, Generation::kRedfish);
  EXPECT_EQ(script->count("GET"), 1U);
}

TEST_F(GenerationProbe, RefusedPortAndIpmi20) {
  UdpPeer peer({kIpmi20});
  rootFails(base::FailureKind::kUnreachable);
  const auto probed = probe(peer.port());
  EXPECT_FALSE(probed.failure);
  EXPECT_EQ(probed.generation, Generation::kIpmi20);
}

TEST_F(GenerationProbe, NoRedfishAndIpmi15) {
  UdpPeer peer({kIpmi15});
  script->on("GET /redfish/v1/", 200, "<html>");
  EXPECT_EQ(probe(peer.port()).generation, Generation::kIpmi15);
}

TEST_F(GenerationProbe, RefusalOfExtendedDataIsAskedAgainWithout) {
  UdpPeer peer({kRefused, kIpmi15});
  rootFails(base::FailureKind::kTls);
  EXPECT_EQ(probe(peer.port()).generation, Generation::kIpmi15);
  EXPECT_EQ(peer.asked(), 2);
}

TEST_F(GenerationProbe, GarbageIsNoAnswer) {
  UdpPeer peer({"garbage", kIpmi20});
  rootFails(base::FailureKind::kUnreachable);
  EXPECT_EQ(probe(peer.port()).generation, Generation::kIpmi20);
}

TEST_F(GenerationProbe, NobodyListensEndsAtOnce) {
  std::uint16_t free = 0;
  {
    boost::asio::io_context context;
    free = udp::socket(context, udp::endpoint(udp::v4(), 0))
               .local_endpoint()
               .port();
  }
  rootFails(base::FailureKind::kUnreachable);
  const auto begin = base::Clock::now();
  EXPECT_EQ(probe(free).failure->kind, base::FailureKind::kUnreachable);
  // The whole conversation takes 5 s. Wine tells of a closed port only when
  // the second question is sent.
#if defined(_WIN32)
  constexpr std::chrono::milliseconds kAtOnce{1900};
#else
  constexpr std::chrono::milliseconds kAtOnce{1000};
#endif
  EXPECT_LT(base::Clock::now() - begin, kAtOnce);
}

TEST_F(GenerationProbe, HttpWithoutIpmiIsUnknown) {
  script->on("GET /redfish/v1/", 404, "");
  options.lan.host.clear();
  const auto& probed = start().probe();
  EXPECT_FALSE(probed.failure);
  EXPECT_EQ(probed.generation, Generation::kUnknown);
}

TEST_F(GenerationProbe, UntrustedCertificateIsNeverTakenForOld) {
  UdpPeer peer({kIpmi20});
  rootFails(base::FailureKind::kCertificate);
  EXPECT_EQ(probe(peer.port()).failure->kind, base::FailureKind::kCertificate);
  EXPECT_EQ(peer.asked(), 0);
}

TEST_F(GenerationProbe, UnknownNameIsNeverTakenForOld) {
  rootFails(base::FailureKind::kNameNotResolved);
  EXPECT_TRUE(probe(1).failure);
}

TEST_F(GenerationProbe, FoundOnce) {
  UdpPeer peer({kIpmi20});
  rootFails(base::FailureKind::kUnreachable);
  probe(peer.port());
  service->probe();
  EXPECT_EQ(peer.asked(), 1);
}

}  // namespace
