#include "export/options.h"

#include <algorithm>
#include <string_view>

#include "syshealth/host/arg_parser.h"

namespace exporting {
namespace {

struct Item {
  std::string_view name;
  std::uint32_t wants;
};

// The names that brivel syshealth --device has, and health.
constexpr Item kItems[] = {
    {"all", report::kWantAll},
    {"health", report::kWantHealth},
    {"system", report::kWantSystem},
    {"processor", report::kWantProcessors},
    {"fan", report::kWantFans},
    {"dimm", report::kWantMemory},
    {"power", report::kWantPowerSupplies},
    {"pci_adapter", report::kWantPciAdapters},
};

const Item* itemOf(std::string_view name) {
  for (const Item& item : kItems) {
    if (item.name == name) {
      return &item;
    }
  }
  return nullptr;
}

std::string itemNames() {
  std::string names;
  for (const Item& item : kItems) {
    names += (names.empty() ? "" : ", ") + std::string(item.name);
  }
  return names;
}

}  // namespace

const char kSpecification[] =
    "Writes what servers are made of, and how they are, for programs.\n"
    "  --format NAME     json, one line for each node, which is the default;\n"
    "                    prometheus, a text for its collectors; or csv, the\n"
    "                    one table that --device names\n"
    "  --device LIST     what to read, commas between: health, system,\n"
    "                    processor, fan, dimm, power, pci_adapter, or all,\n"
    "                    which is the default\n"
    "  --node N          one node of a server with several; else every node\n"
    "  --output FILE     write to a file, which is replaced when all is done\n"
    "  --schema          print the JSON Schema of the lines, and nothing else\n"
    "targets: many\n";

std::optional<std::uint32_t> wantsOf(const std::string& list,
                                     std::string& error) {
  std::uint32_t wants = 0;
  std::size_t begin = 0;
  while (begin <= list.size()) {
    const std::size_t end = std::min(list.find(',', begin), list.size());
    const std::string name = list.substr(begin, end - begin);
    const Item* const item = itemOf(name);
    if (item == nullptr) {
      error = "--device: '" + name + "' is no item; items are " + itemNames();
      return std::nullopt;
    }
    wants |= item->wants;
    begin = end + 1;
  }
  return wants;
}

std::optional<Options> readOptions(std::string& error) {
  ArgParser* const parser = ArgParser::GetInstance();
  Options options;
  if (parser == nullptr) {
    return options;
  }
  parser->GetValue("format", options.format);
  parser->GetValue("output", options.output);
  options.schema = parser->GetValue("schema");
  if (parser->GetValue("device", options.device)) {
    const auto wants = wantsOf(options.device, error);
    if (!wants) {
      return std::nullopt;
    }
    options.wants = *wants;
  }
  return options;
}

}  // namespace exporting
