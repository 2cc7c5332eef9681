#include "suite/platform/library_search.h"

namespace platform {

void limitLibrarySearch() {}

int librarySearchFlags() { return 0; }

}  // namespace platform
