#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "syshealth/result/result_registry.h"
#include "tests/syshealth/result/message_list.h"

// The registry's place is taken by a recorder: this program holds everything
// of the module but the registry, and sees what its files register at load.

namespace {

struct Registration {
  int module;
  int number;
  std::string message;
};

std::vector<Registration>& registrations() {
  static std::vector<Registration> recorded;
  return recorded;
}

}  // namespace

int registerResult(int module, int number, const char* message) {
  registrations().push_back({module, number, message});
  return number | (module << 16);
}

std::string getResultMessage(int /*code*/) { return ""; }

namespace {

TEST(ResultCodes, ThreeFilesRegisterEveryConstant) {
  std::map<int, int> copies;
  for (const Registration& row : registrations()) {
    ++copies[row.number | (row.module << 16)];
  }
  EXPECT_EQ(copies.size(), 139U);
  for (const auto& [code, count] : copies) {
    EXPECT_EQ(count, 3) << code;
  }
}

TEST(ResultCodes, EveryCopyRegistersTheSameText) {
  const std::map<int, std::string> expected =
      readMessageList("registered_messages.txt");
  for (const Registration& row : registrations()) {
    EXPECT_EQ(row.message, expected.at(row.number | (row.module << 16)));
  }
}

TEST(ResultCodes, EachFileRegistersInDeclarationOrder) {
  std::vector<int> expected;
  for (int number = 0; number <= 50; ++number) {
    if (number != 2 && number != 31) {
      expected.push_back(number);
    }
  }
  const std::vector<std::pair<int, int>> lowestNumbers = {
      {4, 100}, {3, 123}, {20, 125}, {18, 114}, {24, 112}, {1, 99}, {2, 119}};
  for (const auto& [module, lowest] : lowestNumbers) {
    for (int number = 125; number >= lowest; --number) {
      expected.push_back(number | (module << 16));
    }
  }
  ASSERT_EQ(registrations().size(), 3 * expected.size());
  for (std::size_t i = 0; i < registrations().size(); ++i) {
    const Registration& row = registrations()[i];
    EXPECT_EQ(row.number | (row.module << 16), expected[i % expected.size()])
        << i;
  }
}

}  // namespace
