#include "suite/brivel/options/completion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

namespace {

using brivel::Completion;
using brivel::CompletionSources;
using brivel::OptionList;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr brivel::Option kExportOptions[] = {
    {"--format", 0, "NAME", brivel::ArgumentKind::kAnyText, 0, 0,
     brivel::OptionSection::kApplication, "json or csv"},
};

// A system with the applications syshealth and export, of which the latter has
// options of its own, and some targets.
CompletionSources sources() {
  CompletionSources sources;
  sources.applications = [] {
    return std::vector<std::string>{"export", "syshealth"};
  };
  sources.options = [](const std::string& application) {
    return application == "syshealth"
               ? OptionList(std::begin(brivel::kItemOptions),
                            std::end(brivel::kItemOptions))
           : application == "export" ? OptionList(std::begin(kExportOptions),
                                                  std::end(kExportOptions))
                                     : OptionList();
  };
  sources.targets = [](const std::string& file) {
    return file.empty()
               ? std::vector<std::string>{"lab", "rack1-n3", "two words", "$x"}
               : std::vector<std::string>{"of-" + file};
  };
  sources.groups = [](const std::string& file) {
    return file.empty() ? std::vector<std::string>{"rack1", "rack2"}
                        : std::vector<std::string>{"group-of-" + file};
  };
  return sources;
}

std::vector<std::string> proposals(const std::vector<std::string>& words) {
  std::vector<std::string> texts;
  for (const brivel::Proposal& proposal :
       brivel::complete(words, sources()).proposals) {
    texts.push_back(proposal.word);
  }
  return texts;
}

TEST(Complete, FirstWordIsAnApplicationOrACommandOfTheHost) {
  EXPECT_THAT(proposals({"sys"}), ElementsAre("syshealth"));
  EXPECT_THAT(proposals({"--stats", "app"}), ElementsAre("applications"));
  EXPECT_THAT(proposals({}), Contains("export"));
  EXPECT_THAT(proposals({""}), Contains("help"));
}

TEST(Complete, EveryOptionOfTheTables) {
  const std::vector<std::string> host = proposals({"--"});
  for (const brivel::Option& option : brivel::hostOptions()) {
    EXPECT_THAT(host, Contains(std::string(option.name)));
  }
  const std::vector<std::string> all = proposals({"syshealth", "-"});
  for (const brivel::Option& option :
       brivel::withHostOptions(brivel::kItemOptions)) {
    EXPECT_THAT(all, Contains(std::string(option.name)));
  }
  EXPECT_EQ(all.size(),
            std::size(brivel::kOptions) + std::size(brivel::kItemOptions));
}

TEST(Complete, OptionsAreThoseOfTheApplication) {
  EXPECT_THAT(proposals({"export", "--f"}), ElementsAre("--format"));
  EXPECT_THAT(proposals({"export", "--dev"}), IsEmpty());
  EXPECT_THAT(proposals({"syshealth", ""}), ElementsAre("--device", "--node"));
}

TEST(Complete, HostCommandTakesFewOptions) {
  EXPECT_THAT(proposals({"applications", "--"}), Contains("--config"));
  EXPECT_THAT(proposals({"applications", "--"}), Not(Contains("--bmc")));
  EXPECT_THAT(proposals({"help", "s"}), ElementsAre("syshealth"));
}

TEST(Complete, TargetsAndTheirGroups) {
  EXPECT_THAT(proposals({"targets", "--g"}),
              ElementsAre("--group", "--groups"));
  EXPECT_THAT(proposals({"targets", "--group", "r"}),
              ElementsAre("rack1", "rack2"));
  EXPECT_THAT(proposals({"--group", ""}), ElementsAre("rack1", "rack2"));
  EXPECT_THAT(proposals({"--config", "mine", "--group="}),
              ElementsAre("--group=group-of-mine"));
  EXPECT_THAT(proposals({"pin", "r"}), ElementsAre("rack1-n3"));
  EXPECT_THAT(proposals({"pin", "lab", "r"}), ElementsAre("rack1-n3"));
  EXPECT_THAT(proposals({"syshealth", "--g"}), IsEmpty());
}

TEST(Complete, OptionThatIsGivenIsNotProposedAgain) {
  EXPECT_THAT(proposals({"--bmc", "lab", "syshealth", "--b"}), IsEmpty());
  EXPECT_THAT(proposals({"-H", "lab", "syshealth", "--b"}), IsEmpty());
  EXPECT_THAT(proposals({"--bmc=lab", "syshealth", "--b"}), IsEmpty());
}

TEST(Complete, ItemsWithCommas) {
  EXPECT_THAT(proposals({"syshealth", "--device", "p"}),
              ElementsAre("processor", "power", "pci_adapter"));
  EXPECT_THAT(proposals({"syshealth", "--device", "fan,d"}),
              ElementsAre("fan,dimm"));
  EXPECT_THAT(proposals({"syshealth", "--device", "fan,"}),
              Not(Contains("fan,fan")));
  EXPECT_THAT(proposals({"syshealth", "--device", "a"}), ElementsAre("all"));
  EXPECT_THAT(proposals({"syshealth", "--device", "fan,a"}), IsEmpty());
  EXPECT_THAT(proposals({"syshealth", "--device=fan,d"}),
              ElementsAre("--device=fan,dimm"));
}

TEST(Complete, TargetsOfTheSettingsThatAreChosen) {
  EXPECT_THAT(proposals({"--bmc", "r"}), ElementsAre("rack1-n3"));
  EXPECT_THAT(proposals({"-H", "r"}), ElementsAre("rack1-n3"));
  EXPECT_THAT(proposals({"--bmc="}),
              ElementsAre("--bmc=lab", "--bmc=rack1-n3", "--bmc=file:"));
  EXPECT_THAT(proposals({"--config", "mine", "--bmc", "o"}),
              ElementsAre("of-mine"));
  EXPECT_THAT(proposals({"--config=mine", "--bmc", "o"}),
              ElementsAre("of-mine"));
}

TEST(Complete, ProposesNothingThatAShellWouldRun) {
  EXPECT_THAT(proposals({"--bmc", "two"}), IsEmpty());
  EXPECT_THAT(proposals({"--bmc", "$"}), IsEmpty());
}

TEST(Complete, FoldersOfRecordedServers) {
  const std::filesystem::path folder =
      std::filesystem::path(testing::TempDir()) / "completion_test";
  std::filesystem::create_directories(folder / "one");
  std::filesystem::create_directories(folder / "other" / "below");
  std::filesystem::create_directories(folder / "$(bad)");
  const std::string typed = "file:" + folder.generic_u8string() + "/o";
  const std::string begun = typed.substr(0, typed.size() - 1);
  EXPECT_THAT(
      proposals({"--bmc", typed}),
      ::testing::UnorderedElementsAre(begun + "one/", begun + "other/"));
  EXPECT_THAT(proposals({"--bmc", begun + "other/"}),
              ElementsAre(begun + "other/below/"));
  EXPECT_THAT(proposals({"--bmc", begun + "none/"}), IsEmpty());
  EXPECT_THAT(proposals({"--bmc", begun + "$"}), IsEmpty());
  std::filesystem::remove_all(folder);
}

TEST(Complete, FilesAreTheShells) {
  const Completion file = brivel::complete({"--config", "x"}, sources());
  EXPECT_TRUE(file.files);
  EXPECT_THAT(file.proposals, IsEmpty());
  EXPECT_TRUE(brivel::complete({"--local-root", ""}, sources()).files);
  EXPECT_FALSE(brivel::complete({"--timeout", ""}, sources()).files);
}

TEST(Complete, BehindTheEndOfTheOptionsAreWords) {
  EXPECT_THAT(proposals({"--", "sys"}), ElementsAre("syshealth"));
  EXPECT_THAT(proposals({"--", "--b"}), IsEmpty());
}

}  // namespace
