#include "suite/local/pci/pci_vpd.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "tests/suite/local/folder.h"

namespace local {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;
using testing::SizeIs;

std::string field(const std::string& keyword, const std::string& value) {
  return keyword + static_cast<char>(value.size()) + value;
}

std::string resource(char tag, const std::string& data) {
  return std::string(1, tag) + static_cast<char>(data.size() & 0xFFU) +
         static_cast<char>(data.size() >> 8U) + data;
}

std::string vpd() {
  return resource('\x82', "Dual-port card") +
         resource('\x90', field("PN", "NB-200  ") + field("EC", "A") +
                              field("SN", std::string("SN-9\0\0", 6))) +
         resource('\x91', field("YA", "tag")) + "\x78";
}

TEST(ParseVpd, ReadsSerialAndPartNumber) {
  const std::string bytes = vpd();
  const VitalProductData data = parseVpd(base::ByteView(bytes));
  EXPECT_EQ(data.serial, "SN-9");
  EXPECT_EQ(data.partNumber, "NB-200");
  EXPECT_TRUE(data.complete);
}

TEST(ParseVpd, EmptyResourceDoesNotEndTheData) {
  const std::string bytes = resource('\x82', "") + vpd();
  EXPECT_EQ(parseVpd(base::ByteView(bytes)).serial, "SN-9");
}

TEST(ParseVpd, EveryTruncationIsSurvived) {
  const std::string bytes = vpd();
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    const std::string cut = bytes.substr(0, length);
    EXPECT_FALSE(parseVpd(base::ByteView(cut)).complete) << length;
  }
}

TEST(ParseVpd, FieldsBeforeACutAreRead) {
  const std::string bytes = vpd();
  const std::string cut = bytes.substr(0, bytes.find("EC") + 1);
  EXPECT_EQ(parseVpd(base::ByteView(cut)).partNumber, "NB-200");
}

TEST(ParseVpd, FieldLengthPastTheResourceEndsIt) {
  const std::string bytes = resource('\x90', std::string("SN\xFFx")) + "\x78";
  const VitalProductData data = parseVpd(base::ByteView(bytes));
  EXPECT_EQ(data.serial, "");
  EXPECT_TRUE(data.complete);
}

TEST(ParseVpd, ZerosAndOnesAreNoData) {
  for (const char byte : {'\0', '\xFF'}) {
    const std::string bytes(4096, byte);
    const VitalProductData data = parseVpd(base::ByteView(bytes));
    EXPECT_FALSE(data.complete);
    EXPECT_EQ(data.serial, "");
  }
}

TEST(ReadVpds, ReadsEachFolder) {
  Folder folder;
  folder.file("/sys/a/vpd", vpd()).file("/sys/b/vpd", "").folder("/sys/c");
  const auto found =
      readVpds(folder.root(), {"/sys/a", "/sys/b", "/sys/c"}, 10s);
  ASSERT_THAT(found, SizeIs(2));
  EXPECT_EQ(found.at("/sys/a").serial, "SN-9");
  EXPECT_EQ(found.at("/sys/b").serial, "");
}

TEST(ReadVpds, DataBehindTheFirstChunkAreRead) {
  Folder folder;
  folder.file("/sys/a/vpd", resource('\x82', std::string(700, 'x')) + vpd());
  EXPECT_EQ(readVpds(folder.root(), {"/sys/a"}, 10s).at("/sys/a").serial,
            "SN-9");
}

TEST(ReadVpds, NoneWithoutFiles) {
  const Folder folder;
  EXPECT_THAT(readVpds(folder.root(), {"/sys/a"}, 10s), IsEmpty());
}

TEST(ReadVpds, LimitEndsTheWait) {
  Folder folder;
  folder.file("/sys/a/vpd", vpd());
  // Whatever was read by then: the call comes back, and the thread that
  // reads on is on its own.
  const auto start = std::chrono::steady_clock::now();
  readVpds(folder.root(), {"/sys/a"}, 0ms);
  EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
}

}  // namespace
}  // namespace local
