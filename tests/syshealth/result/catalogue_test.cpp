#include <gtest/gtest.h>

#include <map>
#include <string>

#include "syshealth/result/result_codes.h"
#include "tests/syshealth/result/message_list.h"

// The catalogue against lists that are kept apart from the sources: a text is
// changed in both places or not at all.

namespace {

class Catalogue : public testing::Test {
 protected:
  std::map<int, std::string> registered =
      readMessageList("registered_messages.txt");
  std::map<int, std::string> legacy = readMessageList("legacy_messages.txt");
};

TEST_F(Catalogue, RegisteredListIsWhole) {
  EXPECT_EQ(registered.size(), 139U);
  std::map<int, int> rows;
  for (const auto& [code, message] : registered) {
    ++rows[code >> 16];
  }
  EXPECT_EQ(rows, (std::map<int, int>{{0, 49},
                                      {1, 27},
                                      {2, 7},
                                      {3, 3},
                                      {4, 26},
                                      {18, 12},
                                      {20, 1},
                                      {24, 14}}));
}

TEST_F(Catalogue, LegacyListIsWhole) {
  EXPECT_EQ(legacy.size(), 202U);
  std::map<int, int> rows;
  for (const auto& [code, message] : legacy) {
    ++rows[code >> 8];
  }
  EXPECT_EQ(rows, (std::map<int, int>{{0x06, 180}, {0x0B, 10}, {0x0C, 12}}));
}

TEST_F(Catalogue, EveryRegisteredCodeHasItsText) {
  for (const auto& [code, message] : registered) {
    EXPECT_EQ(getResultMessage(code), message) << code;
  }
}

TEST_F(Catalogue, EveryLegacyCodeHasItsText) {
  for (const auto& [code, message] : legacy) {
    EXPECT_EQ(getResultMessage(code), message) << code;
  }
}

TEST_F(Catalogue, EveryOtherRegisteredCodeGivesFallback) {
  for (int module = 0; module < 32; ++module) {
    for (int number = 0; number < 256; ++number) {
      const int code = number | (module << 16);
      if (registered.count(code) == 0) {
        EXPECT_EQ(getResultMessage(code), "Unknow error") << code;
      }
    }
  }
}

TEST_F(Catalogue, EveryOtherLegacyCodeGivesFallback) {
  for (int code = 0x0100; code <= 0xFFFF; ++code) {
    if ((code & 0xFF00) != 0 && legacy.count(code) == 0) {
      EXPECT_EQ(getResultMessage(code), "Unknown error") << code;
    }
  }
}

TEST_F(Catalogue, GapsWithinTheLegacyGroupsGiveFallback) {
  for (const int code : {1547, 1551, 1560, 1563, 1582, 1583, 1586, 1588, 1630,
                         1659, 1677, 1695, 2822, 3080}) {
    EXPECT_EQ(getResultMessage(code), "Unknown error") << code;
  }
}

TEST_F(Catalogue, Number125HasTheTextOfItsModule) {
  const std::map<int, std::string> expected = {
      {1, "Skip updating this package."},
      {2, "Libcurl error: Unsupported protocol."},
      {3, "Failed to trigger diagnostic."},
      {4, "Failed to run command."},
      {18, "Download SMM FFDC error: setup environment failed."},
      {20,
       "Switch does not support EHCM or the CMM build is not supported to "
       "check EHCM."},
      {24,
       "Please make sure the command of RAID config run on the Talvora with "
       "lastest Dravik firmware version."}};
  for (int module = 0; module < 32; ++module) {
    const auto row = expected.find(module);
    EXPECT_EQ(getResultMessage(125 | (module << 16)),
              row == expected.end() ? "Unknow error" : row->second)
        << module;
  }
}

TEST_F(Catalogue, LeadingBlanksAreKept) {
  EXPECT_EQ(getResultMessage(1569),
            " Failed to upload update package to online VMWare ESXi.");
  EXPECT_EQ(getResultMessage(1736), " Failed to complete BMU update.");
}

TEST_F(Catalogue, TrailingBlanksAreKept) {
  for (const int code :
       {30, 33, 0x120072, 0x120073, 0x120074, 0x120077, 0x120078}) {
    const std::string message = getResultMessage(code);
    EXPECT_EQ(message.substr(message.size() - 2), ". ") << code;
  }
}

TEST_F(Catalogue, DoubleFullStopIsKept) {
  const std::string message = getResultMessage(1615);
  EXPECT_EQ(message.substr(message.size() - 8), "upload..");
}

TEST_F(Catalogue, DoubleBlankIsKept) {
  EXPECT_EQ(getResultMessage(1724),
            "Failed to update due to ESXi  service not ready.");
}

TEST_F(Catalogue, QuotationMarksArePartOfTheText) {
  EXPECT_EQ(getResultMessage(1674),
            "\"--sftp\" parameter is mandatory to update the target system. "
            "Please add it and retry.");
}

TEST_F(Catalogue, NamedConstantsHaveTheirCodes) {
  EXPECT_EQ(kResultSuccess, 0);
  EXPECT_EQ(kResultGenericFailure, 1);
  EXPECT_EQ(kResultInvalidCommand, 4);
  EXPECT_EQ(kResultReadFileFailed, 10);
  EXPECT_EQ(kResultConnectionFailed, 13);
  EXPECT_EQ(kResultInternalError, 17);
  EXPECT_EQ(kResultNotSupported, 25);
}

}  // namespace
