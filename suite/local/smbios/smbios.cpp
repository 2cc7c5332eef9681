#include "suite/local/smbios/smbios.h"

#include <algorithm>

#include "suite/base/time_limit.h"

namespace local {
namespace {

constexpr std::size_t kHeaderLength = 4;
// Handles have 16 bits, so no honest table has more.
constexpr std::size_t kMaxStructures = 65536;

std::string at(std::size_t offset) {
  return " at offset " + std::to_string(offset);
}

// Cuts the structure at the head of `rest`, whose place in the table is
// `offset`. Nothing, and a defect, when there is none to be had.
std::optional<SmbiosStructure> cutStructure(base::ByteView rest,
                                            std::size_t offset,
                                            std::vector<std::string>& defects) {
  const auto type = rest.byte(0);
  const auto length = rest.byte(1);
  const auto handle = rest.word(2);
  if (!type || !length || !handle) {
    defects.push_back("cut-off structure header" + at(offset));
    return std::nullopt;
  }
  const auto formatted = rest.slice(0, *length);
  if (*length < kHeaderLength || !formatted) {
    defects.push_back("structure of type " + std::to_string(*type) +
                      at(offset) + " states the impossible length " +
                      std::to_string(*length));
    return std::nullopt;
  }
  return SmbiosStructure{*type, *handle, *formatted, {}};
}

}  // namespace

std::string_view SmbiosStructure::string(std::size_t offset) const {
  const std::uint8_t number = formatted.byte(offset).value_or(0);
  std::string_view rest = strings;
  for (unsigned i = 1; i <= number && !rest.empty(); ++i) {
    base::heedTime();
    const std::size_t end = std::min(rest.find('\0'), rest.size());
    if (i == number) {
      return rest.substr(0, end);
    }
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return {};
}

std::vector<const SmbiosStructure*> SmbiosTables::ofType(
    SmbiosType type) const {
  std::vector<const SmbiosStructure*> found;
  for (const SmbiosStructure& structure : structures) {
    base::heedTime();
    if (structure.type == type) {
      found.push_back(&structure);
    }
  }
  return found;
}

SmbiosTables parseSmbios(const std::optional<SmbiosEntry>& entry,
                         base::ByteView table) {
  SmbiosTables tables;
  tables.version = {3, 0};
  if (entry) {
    tables.version = entry->version;
    if (!entry->checksumRight) {
      tables.defects.emplace_back("wrong checksum of the entry point");
    }
    if (entry->tableLength > 0 && entry->tableLength < table.size()) {
      table = base::ByteView(table.text().substr(0, entry->tableLength));
    }
  } else {
    tables.defects.emplace_back("no usable entry point");
  }

  bool ended = false;
  std::size_t offset = 0;
  while (offset < table.size() && !ended) {
    base::heedTime();
    if (tables.structures.size() == kMaxStructures) {
      tables.defects.emplace_back("more structures than there are handles");
      break;
    }
    auto structure = cutStructure(table.from(offset), offset, tables.defects);
    if (!structure) {
      break;
    }
    const std::size_t stringsAt = offset + structure->formatted.size();
    // The set of strings ends with an empty one, so two NULs in a row end
    // the structure.
    const std::size_t end =
        table.text().find(std::string_view("\0\0", 2), stringsAt);
    if (end == std::string_view::npos) {
      tables.defects.push_back("unterminated strings" + at(stringsAt));
      structure->strings = table.text().substr(stringsAt);
      offset = table.size();
    } else {
      structure->strings = table.text().substr(stringsAt, end - stringsAt);
      offset = end + 2;
    }
    ended = structure->type == kSmbiosEnd;
    tables.structures.push_back(*structure);
  }
  // The count is not obeyed, because the length and the end mark bound the
  // table already; a wrong one is firmware worth knowing of.
  if (entry && entry->structureCount > 0 &&
      entry->structureCount != tables.structures.size()) {
    tables.defects.push_back("the entry point counts " +
                             std::to_string(entry->structureCount) +
                             " structures, the table has " +
                             std::to_string(tables.structures.size()));
  }
  return tables;
}

}  // namespace local
