#include "suite/local/smbios/firmware_table.h"

#include <cstddef>
#include <utility>

namespace local {
namespace {

// Tables of large servers have some hundred kilobytes.
constexpr std::size_t kTableLimit = 4U * 1024 * 1024;
constexpr std::size_t kEntryLimit = 4096;

}  // namespace

FirmwareTable tableInFolders(const Root& root) {
  FirmwareTable table;
  table.name = kTablePath;
  Content content = root.read(kTablePath, kTableLimit);
  table.access = content.access;
  table.bytes = std::move(content.bytes);
  if (table.access == Access::kRead) {
    const Content entry = root.read(kEntryPointPath, kEntryLimit);
    table.entry = parseSmbiosEntry(base::ByteView(entry.bytes));
  }
  return table;
}

}  // namespace local
