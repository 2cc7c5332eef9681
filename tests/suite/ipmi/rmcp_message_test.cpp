#include "suite/ipmi/rmcp_message.h"

#include <gtest/gtest.h>

namespace {

using ipmi::Capabilities;
using ipmi::readCapabilities;
using ipmi::readPresencePong;

std::string hex(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
    while (text[i] == ' ') {
      ++i;
    }
    bytes += static_cast<char>(
        std::stoi(std::string(text.substr(i, 2)), nullptr, 16));
  }
  return bytes;
}

// An answer with this completion code and these data, checksums right.
std::string answer(int completion, const std::string& data) {
  std::string body = hex("200038");
  body += static_cast<char>(completion);
  body += data;
  unsigned sum = 0;
  for (const char byte : body) {
    sum += static_cast<unsigned char>(byte);
  }
  body += static_cast<char>(0x100 - (sum & 0xFF));
  const std::string message = hex("811C63") + body;
  return hex("0600FF07 00 00000000 00000000") +
         static_cast<char>(message.size()) + message;
}

TEST(CapabilitiesRequest, AsksForExtendedData) {
  EXPECT_EQ(ipmi::capabilitiesRequest(true),
            hex("0600FF07000000000000000000092018C88100388E04B5"));
}

TEST(CapabilitiesRequest, AsksWithoutExtendedData) {
  EXPECT_EQ(ipmi::capabilitiesRequest(false),
            hex("0600FF07000000000000000000092018C88100380E0435"));
}

TEST(ReadCapabilities, BothBitsAreIpmi20) {
  EXPECT_EQ(ipmi::readCapabilities(answer(0, hex("0184040200000000"))),
            ipmi::Capabilities::kIpmi20);
}

TEST(ReadCapabilities, WithoutExtendedBitIsIpmi15) {
  EXPECT_EQ(ipmi::readCapabilities(answer(0, hex("0104040200000000"))),
            ipmi::Capabilities::kIpmi15);
}

TEST(ReadCapabilities, WithoutVersionBitIsIpmi15) {
  EXPECT_EQ(ipmi::readCapabilities(answer(0, hex("0184040100000000"))),
            ipmi::Capabilities::kIpmi15);
}

TEST(ReadCapabilities, CompletionCodeIsARefusal) {
  EXPECT_EQ(ipmi::readCapabilities(answer(0xCC, "")),
            ipmi::Capabilities::kRefused);
}

TEST(ReadCapabilities, WrongChecksumIsNoAnswer) {
  std::string datagram = answer(0, hex("0184040200000000"));
  datagram.back() = static_cast<char>(datagram.back() + 1);
  EXPECT_FALSE(ipmi::readCapabilities(datagram));
}

TEST(ReadCapabilities, EveryTruncationIsNoAnswer) {
  const std::string datagram = answer(0, hex("0184040200000000"));
  for (std::size_t size = 0; size < datagram.size(); ++size) {
    EXPECT_FALSE(ipmi::readCapabilities(datagram.substr(0, size))) << size;
  }
}

TEST(ReadCapabilities, AnotherCommandIsNoAnswer) {
  std::string datagram = answer(0, hex("0184040200000000"));
  datagram[19] = 0x39;
  EXPECT_FALSE(ipmi::readCapabilities(datagram));
}

TEST(PresencePing, CarriesItsTag) {
  EXPECT_EQ(ipmi::presencePing(0x42), hex("0600FF06000011BE80420000"));
}

TEST(ReadPresencePong, TellsWhetherIpmiIsSupported) {
  const std::string start = hex("0600FF06000011BE40420010 0000000000000000");
  EXPECT_EQ(ipmi::readPresencePong(start + hex("8100000000000000"), 0x42),
            true);
  EXPECT_EQ(ipmi::readPresencePong(start + hex("0100000000000000"), 0x42),
            false);
}

TEST(ReadPresencePong, AnotherTagIsNoAnswer) {
  const std::string start = hex("0600FF06000011BE40420010 0000000000000000");
  EXPECT_FALSE(ipmi::readPresencePong(start + hex("8100000000000000"), 0x43));
}

}  // namespace
