#include "suite/platform/library_search.h"

#include <windows.h>

namespace platform {
namespace {

constexpr DWORD kOwnFolders =
    LOAD_LIBRARY_SEARCH_APPLICATION_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32;

}  // namespace

void limitLibrarySearch() {
  // Fails on no system that we run on.
  static_cast<void>(SetDefaultDllDirectories(kOwnFolders));
}

int librarySearchFlags() {
  return static_cast<int>(kOwnFolders | LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR);
}

}  // namespace platform
