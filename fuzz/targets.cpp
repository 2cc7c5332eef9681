// Settings, and behind a line "%%" a list of targets as a person or a program
// writes it.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>

#include "fuzz/budget.h"
#include "fuzz/require.h"
#include "suite/base/ascii.h"
#include "suite/connection/settings/settings.h"
#include "suite/fleet/members.h"

namespace {

void checkMembers(const std::vector<fleet::Member>& members,
                  const std::string& list) {
  const auto lines =
      static_cast<std::size_t>(std::count(list.begin(), list.end(), '\n'));
  require(members.size() <= lines + 1);
  for (const fleet::Member& member : members) {
    require(!member.name.empty());
    if (member.target) {
      require(member.target->maxConnections >= 1 &&
              member.target->maxConnections <= 16);
      require(member.target->timeout.count() > 0);
    } else {
      require(!member.target.error().cause.empty());
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const StepBudget budget(2000, 100, size);
  constexpr std::string_view kMark = "\n%%\n";
  const std::size_t mark = std::min(input.find(kMark), input.size());
  const std::string list(
      input.substr(std::min(mark + kMark.size(), input.size())));
  const auto read = connection::readSettings(input.substr(0, mark), "fuzz.toml",
                                             "/home/fuzz");
  const connection::Settings settings = read ? *read : connection::Settings();
  for (const auto& [name, targets] : settings.groups) {
    require(connection::findGroup(settings, name).has_value());
    const auto members = fleet::membersNamed(targets, {}, settings);
    require(members.size() == targets.size());
  }
  std::istringstream lines(list);
  checkMembers(fleet::membersListed(lines, "list", {}, settings), list);
  return 0;
}
