#include "tests/syshealth/result/message_list.h"

#include <gtest/gtest.h>

#include <charconv>
#include <fstream>

std::map<int, std::string> readMessageList(const std::string& fileName) {
  std::map<int, std::string> messages;
  std::ifstream file(MESSAGE_LIST_FOLDER "/" + fileName, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << fileName;
  for (std::string row; std::getline(file, row);) {
    int code = 0;
    const auto [end, error] =
        std::from_chars(row.data(), row.data() + row.size(), code);
    const std::string text =
        row.substr(static_cast<std::size_t>(end - row.data()));
    if (error != std::errc() || text.size() < 3 || text.front() != ' ' ||
        text[1] != '"' || text.back() != '"') {
      ADD_FAILURE() << "no row: " << row;
      continue;
    }
    EXPECT_TRUE(messages.emplace(code, text.substr(2, text.size() - 3)).second)
        << "twice: " << row;
  }
  return messages;
}
