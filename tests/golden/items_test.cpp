// The items of --device stand in both wings: in the host, which reads ahead
// and refuses other names, and in the module, which reports them. Here they
// are held together.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/golden/text_file.h"
#include "tests/support/child_process.h"
#include "tests/support/temp_folder.h"

namespace golden {
namespace {

struct Shown {
  int status = 0;
  std::string output;
  std::string errors;
};

Shown show(const std::string& items) {
  const support::TempFolder home;
  support::ChildOptions options;
  options.program = BRIVEL_PROGRAM;
  options.arguments = {"--bmc", "file:samples/rack-server", "syshealth",
                       "--device", items};
  options.environment = support::sanitizerOptions();
  options.environment.push_back("HOME=" + home.path().string());
  options.directory = BRIVEL_SOURCE_ROOT;
  support::ChildProcess child(options);
  Shown shown;
  shown.status = child.wait().status;
  shown.output = child.output();
  shown.errors = child.errors();
  return shown;
}

// The items that the host knows, in its order, from its refusal of another.
std::vector<std::string> itemsOfHost() {
  const std::string errors = show("none-of-them").errors;
  const std::string before = "items are ";
  const std::size_t begin = errors.find(before);
  const std::size_t end = errors.find(", or all alone");
  if (begin == std::string::npos || end == std::string::npos) {
    ADD_FAILURE() << "no list of items in: " << errors;
    return {};
  }
  const std::size_t first = begin + before.size();
  return linesOf(replaceAll(errors.substr(first, end - first), ", ", "\n"));
}

TEST(DeviceItems, ModuleReportsEachThatTheHostKnowsAndAllIsTheirSequence) {
  const std::vector<std::string> items = itemsOfHost();
  EXPECT_EQ(items.size(), 6U);
  std::string oneByOne;
  for (const std::string& item : items) {
    const Shown shown = show(item);
    EXPECT_EQ(shown.status, 0) << item << ": " << shown.errors;
    EXPECT_NE(shown.output, "") << item;
    oneByOne += shown.output;
  }
  EXPECT_EQ(show("all").output, oneByOne);
}

}  // namespace
}  // namespace golden
