#include "suite/redfish/loader_pages.h"

#if defined(__linux__) && defined(NDEBUG)

#include <link.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>

namespace redfish {
namespace {

// Gives back the segments of one library that are never written to: what the
// loader writes, relocations included, lies in writable ones.
int releaseSegments(dl_phdr_info* library, std::size_t /*size*/,
                    void* pageSize) {
  const std::uintptr_t page = *static_cast<std::uintptr_t*>(pageSize);
  for (std::size_t index = 0; index < library->dlpi_phnum; ++index) {
    const ElfW(Phdr)& segment = library->dlpi_phdr[index];
    if (segment.p_type != PT_LOAD || (segment.p_flags & PF_W) != 0) {
      continue;
    }
    const std::uintptr_t begin = library->dlpi_addr + segment.p_vaddr;
    const std::uintptr_t first = begin / page * page;
    // A refusal costs memory and nothing else.
    static_cast<void>(madvise(reinterpret_cast<void*>(first),
                              begin + segment.p_memsz - first, MADV_DONTNEED));
  }
  return 0;
}

}  // namespace

void releaseLoaderPages() noexcept {
  auto pageSize = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  dl_iterate_phdr(releaseSegments, &pageSize);
}

}  // namespace redfish

#else

void redfish::releaseLoaderPages() noexcept {}

#endif
