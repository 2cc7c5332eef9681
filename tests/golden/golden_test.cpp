// Runs the built program on every case below the folder CASES.
//
// With GOLDEN_REFRESH in the environment, what the program writes is kept
// instead of compared; tests/golden/refresh does that. GOLDEN_PROGRAM names
// another program to run, such as tests/windows/brivel.

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>

#include "tests/golden/golden_case.h"

namespace {

class Golden : public testing::Test {
 public:
  Golden(golden::Case theCase, golden::Setting setting)
      : case_(std::move(theCase)), setting_(std::move(setting)) {}

  void TestBody() override { golden::runCase(case_, setting_); }

 private:
  golden::Case case_;
  golden::Setting setting_;
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const char* const other = std::getenv("GOLDEN_PROGRAM");
  const golden::Setting setting{
      other == nullptr ? BRIVEL_PROGRAM : other, BRIVEL_SOURCE_ROOT,
      std::getenv("GOLDEN_REFRESH") != nullptr, other != nullptr};
  const auto cases = golden::findCases(setting.root / CASES);
  if (cases.empty()) {
    std::cerr << "no cases below " << setting.root / CASES << "\n";
    return EXIT_FAILURE;
  }
  for (const golden::Case& found : cases) {
    testing::RegisterTest(
        SUITE, found.name.c_str(), nullptr, nullptr, __FILE__, __LINE__,
        [found, setting]() -> Golden* { return new Golden(found, setting); });
  }
  return RUN_ALL_TESTS();
}
