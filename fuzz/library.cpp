// Files that come with a system: a library that is to be loaded as an
// application (first byte even), and the list of PCI names (odd; the next eight
// bytes are the numbers that are looked up).
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/budget.h"
#include "fuzz/require.h"
#include "suite/base/byte_view.h"
#include "suite/brivel/modules/library_file.h"
#include "suite/local/pci/pci_ids.h"
#include "suite/local/recording/pci_names.h"

namespace {

// Looks at a library in memory, which takes no disk.
void readLibrary(std::string_view bytes) {
  static const int file = ::memfd_create("library", MFD_CLOEXEC);
  require(file >= 0 && ::ftruncate(file, 0) == 0 &&
          ::pwrite(file, bytes.data(), bytes.size(), 0) ==
              static_cast<ssize_t>(bytes.size()));
  const std::string problem =
      brivel::problemWithLibrary("/proc/self/fd/" + std::to_string(file));
  require(problem.empty() || problem.compare(0, 3, "it ") == 0);
  // What is shorter than a head and one segment cannot be sound.
  require(!problem.empty() || bytes.size() >= 64);
}

std::uint16_t numberAt(std::string_view bytes, std::size_t place) {
  return base::ByteView(bytes).word(place).value_or(0);
}

void readNames(std::string_view bytes) {
  const local::PciIdentity identity = {numberAt(bytes, 0), numberAt(bytes, 2),
                                       numberAt(bytes, 4), numberAt(bytes, 6)};
  const std::string list(bytes.substr(std::min<std::size_t>(8, bytes.size())));
  const local::PciNames names = local::PciIds(list).names(identity);
  for (const std::string* name : {&names.manufacturer, &names.model}) {
    require(name->find('\n') == std::string::npos);
  }
  // A recording keeps a part of the list.
  require(local::namesOf(list, {identity}).size() <= list.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  if (size == 0) {
    return 0;
  }
  const StepBudget budget(2000, 50, size);
  const std::string_view bytes(reinterpret_cast<const char*>(data + 1),
                               size - 1);
  if (data[0] % 2 == 0) {
    readLibrary(bytes);
  } else {
    readNames(bytes);
  }
  return 0;
}
