// The lines of every recorded server beside the tables that are printed of it:
// the same parts in the same order, with the same values.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "suite/report/json.h"
#include "suite/report/words.h"
#include "tests/export/program/exported.h"

namespace exporting {
namespace {

using Texts = std::vector<std::string>;

// A text with single blanks between its words.
std::string squeezed(const std::string& text) {
  std::istringstream words(text);
  std::string result;
  for (std::string word; words >> word;) {
    result += (result.empty() ? "" : " ") + word;
  }
  return result;
}

std::string row(const Texts& values) {
  std::string line;
  for (const std::string& value : values) {
    line += value + " ";
  }
  return squeezed(line);
}

// One decimal at most, and none where it is 0.
std::string number(std::optional<double> value, const std::string& unit = "") {
  if (!value) {
    return "";
  }
  const double rounded = std::round(*value * 10) / 10;
  std::ostringstream text;
  text.precision(15);
  text << rounded;
  return text.str() + unit;
}

std::string health(report::Health health) {
  constexpr const char* kWords[] = {"Unknown", "OK", "Warning", "Critical"};
  return kWords[static_cast<std::size_t>(health)];
}

// "standby_spare" as services write it: "StandbySpare".
std::string state(report::State state) {
  std::string text;
  bool capital = true;
  for (const char letter : report::wordFor(state)) {
    if (letter != '_') {
      text += capital ? static_cast<char>(std::toupper(letter)) : letter;
    }
    capital = letter == '_';
  }
  return text;
}

// The blocks of rows that are printed of a report, without headings.
std::vector<Texts> expectedBlocks(const report::ServerReport& server) {
  std::vector<Texts> blocks(8);
  const report::System& system = server.system;
  blocks[0].push_back(
      row({system.name, system.typeModel, system.serialNumber, system.uuid}));
  for (const report::Processor& part : *server.processors) {
    blocks[1].push_back(row({part.name, part.model, number(part.speedMhz),
                             number(part.maxSpeedMhz), health(part.health)}));
  }
  for (const report::Fan& part : *server.fans) {
    blocks[2].push_back(row({part.name,
                             part.speedRpm ? number(part.speedRpm, " RPM")
                                           : number(part.speedPercent, " %"),
                             health(part.health)}));
  }
  for (const report::MemoryModule& part : *server.memory) {
    blocks[3].push_back(row(
        {part.slot, part.partNumber, part.serialNumber, part.manufacturer}));
    blocks[4].push_back(
        row({part.type, part.maxSpeedMhz ? number(part.maxSpeedMhz, " MHz")
                                         : number(part.maxSpeedMts, " MT/s")}));
  }
  for (const report::PowerSupply& part : *server.powerSupplies) {
    blocks[5].push_back(row(
        {part.name, number(part.capacityWatts, " W"), health(part.health)}));
  }
  for (const report::PciAdapter& part : *server.pciAdapters) {
    blocks[6].push_back(row({part.name, part.tag}));
    blocks[7].push_back(row({part.manufacturer, part.model, part.serialNumber,
                             part.partNumber, part.sku, state(part.state)}));
  }
  return blocks;
}

// The rows of the blocks of a printed report, without headings and headers.
std::vector<Texts> printedBlocks(const std::string& output) {
  constexpr const char* kHeadings[] = {
      "System Board:", "CPU:", "Fan:", "DIMM:", "Power:", "PCI Adapter:"};
  std::vector<Texts> blocks;
  bool header = false;
  for (const std::string& line : linesOf(output)) {
    if (line.empty()) {
      blocks.emplace_back();
      header = true;
    } else if (std::count(std::begin(kHeadings), std::end(kHeadings), line)) {
      header = true;
    } else if (header) {
      header = false;
    } else {
      blocks.back().push_back(squeezed(line));
    }
  }
  return blocks;
}

// A state that is none of the schema's is "unknown" in JSON and printed as the
// server has it.
void takeStatesOfTheirOwn(Texts& printed, const Texts& expected) {
  for (std::size_t i = 0; i < printed.size() && i < expected.size(); ++i) {
    const std::string unknown = "Unknown";
    const std::size_t end = expected[i].size() - unknown.size();
    if (expected[i].size() > unknown.size() &&
        expected[i].substr(end) == unknown) {
      printed[i] = printed[i].substr(0, printed[i].rfind(' ') + 1) + unknown;
    }
  }
}

Texts with(const Texts& server, const Texts& more) {
  Texts all = server;
  all.insert(all.end(), more.begin(), more.end());
  return all;
}

class Samples : public testing::TestWithParam<Texts> {};

TEST_P(Samples, HaveTheSamePartsInJsonAndInTables) {
  const RunEnd exported = runBrivel(with(GetParam(), {"export"}));
  const Texts lines = linesOf(exported.output);
  ASSERT_FALSE(lines.empty()) << exported.errors;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const auto server = report::fromJson(lines[i]);
    ASSERT_TRUE(server) << server.error().cause;
    EXPECT_EQ(server->target.node, static_cast<int>(i) + 1);
    EXPECT_EQ(server->target.nodes, static_cast<int>(lines.size()));
    const RunEnd shown =
        runBrivel(with(GetParam(), {"syshealth", "--device", "all", "--node",
                                    std::to_string(server->target.node)}));
    ASSERT_EQ(shown.status, 0) << shown.errors;
    auto printed = printedBlocks(shown.output);
    const auto expected = expectedBlocks(*server);
    ASSERT_EQ(printed.size(), expected.size());
    takeStatesOfTheirOwn(printed[7], expected[7]);
    for (std::size_t block = 0; block < expected.size(); ++block) {
      EXPECT_EQ(printed[block], expected[block]) << "block " << block;
    }
  }
}

TEST_P(Samples, ObeyTheSchema) {
  if (!hasValidator()) {
    GTEST_SKIP() << "python3-jsonschema is not here";
  }
  EXPECT_EQ(objectionOfSchema(runBrivel(with(GetParam(), {"export"})).output),
            "");
}

TEST_P(Samples, AreReadByJq) {
  const std::string lines = runBrivel(with(GetParam(), {"export"})).output;
  const RunEnd end = runOn("jq",
                           {"-r",
                            "[.processors, .memory, .fans, .power_supplies,"
                            " .pci_adapters] | map(length) | @csv"},
                           lines);
  if (end.status == 127) {
    GTEST_SKIP() << "jq is not here";
  }
  ASSERT_EQ(end.status, 0) << end.errors;
  const Texts counted = linesOf(end.output);
  const Texts written = linesOf(lines);
  ASSERT_EQ(counted.size(), written.size());
  for (std::size_t i = 0; i < written.size(); ++i) {
    const auto server = report::fromJson(written[i]);
    ASSERT_TRUE(server) << server.error().cause;
    std::ostringstream expected;
    expected << server->processors->size() << ',' << server->memory->size()
             << ',' << server->fans->size() << ','
             << server->powerSupplies->size() << ','
             << server->pciAdapters->size();
    EXPECT_EQ(counted[i], expected.str());
  }
}

std::string sampleName(const testing::TestParamInfo<Texts>& info) {
  std::string name = info.param.back();
  name = name.substr(name.rfind('/') + 1);
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Recorded, Samples,
                         testing::ValuesIn(recordedServers()), sampleName);

}  // namespace
}  // namespace exporting
