#include "suite/fleet/members.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "tests/support/temp_folder.h"

namespace {

using connection::Settings;
using connection::TargetChoice;
using fleet::Member;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

Settings settings(const std::string& text) {
  return *connection::readSettings(text, "s.toml", "/home/a");
}

std::vector<Member> listed(const std::string& text,
                           const Settings& known = Settings()) {
  std::istringstream list(text);
  return fleet::membersListed(list, "rack.txt", {}, known);
}

std::vector<std::string> namesOf(const std::vector<Member>& members) {
  std::vector<std::string> names;
  for (const Member& member : members) {
    names.push_back(member.name);
  }
  return names;
}

TEST(MembersListed, AreNamesAndAddressesOncePerLine) {
  const auto members =
      listed("# rack 1\n\n  10.0.0.5 \r\nlab\n10.0.0.5\n[fe80::1]:8443",
             settings("[targets.lab]\naddress = 'admin@10.0.0.9'\n"));
  EXPECT_THAT(namesOf(members),
              ElementsAre("10.0.0.5", "lab", "[fe80::1]:8443"));
  ASSERT_TRUE(members[1].target);
  EXPECT_EQ(members[1].target->address.host, "10.0.0.9");
  EXPECT_EQ(members[1].target->user, "admin");
}

// The line costs its own target alone, and its text is told nowhere: it may be
// a password.
TEST(MembersListed, LineThatIsNotUnderstoodIsNamedByItsPlace) {
  const auto members = listed("10.0.0.5\nadmin:hunter2@10.0.0.6\n10.0.0.7\n");
  EXPECT_THAT(namesOf(members),
              ElementsAre("10.0.0.5", "rack.txt:2", "10.0.0.7"));
  ASSERT_FALSE(members[1].target);
  const base::Failure failure = members[1].target.error();
  EXPECT_EQ(failure.kind, base::FailureKind::kUsage);
  EXPECT_THAT(failure.cause, HasSubstr("password in the address"));
  EXPECT_EQ(describe(failure).find("hunter2"), std::string::npos);
}

TEST(Members, HaveOneConnectionUnlessSomebodyToldOtherwise) {
  EXPECT_EQ(listed("10.0.0.5").front().target->maxConnections, 1);
  EXPECT_EQ(listed("10.0.0.5", settings("[defaults]\nmax-connections = 3\n"))
                .front()
                .target->maxConnections,
            3);
  TargetChoice choice;
  choice.given.maxConnections = 4;
  EXPECT_EQ(fleet::membersNamed({"10.0.0.5"}, choice, Settings())
                .front()
                .target->maxConnections,
            4);
}

TEST(MembersInFile, FileThatCannotBeReadIsNamed) {
  const support::TempFolder folder;
  const std::string gone = (folder.path() / "gone").string();
  const auto members = fleet::membersInFile(gone, {}, Settings());
  ASSERT_FALSE(members);
  EXPECT_THAT(members.error().cause, HasSubstr("--targets " + gone + ": No"));
  EXPECT_THAT(fleet::membersInFile(folder.path().string(), {}, Settings())
                  .error()
                  .cause,
              HasSubstr("is a directory"));
  EXPECT_EQ(
      fleet::membersInFile(folder.write("list", "10.0.0.5\n"), {}, Settings())
          ->size(),
      1U);
}

}  // namespace
