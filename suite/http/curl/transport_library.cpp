#include "suite/http/curl/transport_library.h"

#include <dlfcn.h>
#include <link.h>

#include <string>
#include <string_view>
#include <utility>

#include "suite/base/text.h"
#include "suite/http/unusable_transport.h"

namespace http {
namespace {

// The library's functions, or why there are none.
struct Library {
  MakeTransport* makeTransport = nullptr;
  DescribeLibraries* describeLibraries = nullptr;
  std::string error;
};

// Where the loader has put libbrivel.so, and by what name.
Dl_info ourselves() {
  // Any address within libbrivel.so serves.
  static const char kHere = 0;
  Dl_info own{};
  if (dladdr(&kHere, &own) == 0) {
    own.dli_fname = "/";
  }
  return own;
}

// Absolute path of a file beside libbrivel.so.
std::string besideUs(const char* file) {
  const std::string path = ourselves().dli_fname;
  return path.substr(0, path.rfind('/') + 1) + file;
}

// Looks at what the loader has loaded, in its order: the program, the kernel's
// own object, preloaded libraries, then what the program is linked with.
int stopAtFirstLibrary(dl_phdr_info* info, std::size_t /*size*/, void* first) {
  const std::string_view name = info->dlpi_name;
  if (name.empty() || name == "linux-vdso.so.1") {
    return 0;
  }
  *static_cast<ElfW(Addr)*>(first) = info->dlpi_addr;
  return 1;
}

// Whether libbrivel.so is the program's first library, so none was preloaded.
bool comeFirst() {
  ElfW(Addr) first = 0;
  dl_iterate_phdr(&stopAtFirstLibrary, &first);
  return first == reinterpret_cast<ElfW(Addr)>(ourselves().dli_fbase);
}

// The library and those that come with it shall look for symbols among each
// other before they look in the program's own libraries, which spares half a
// millisecond. Not where a library was preloaded, whose functions (malloc,
// connect) they would miss, nor where a sanitizer's are in the program.
int lookUpOrder() {
  return BRIVEL_IS_SANITIZED == 0 && comeFirst() ? RTLD_DEEPBIND : 0;
}

// Why the library at a path was not loaded, without the path if it comes first.
std::string loadError(const std::string& path) {
  const char* const text = dlerror();
  const std::string error = base::cleanText(text == nullptr ? "" : text);
  const std::string prefix = path + ": ";
  return error.rfind(prefix, 0) == 0 ? error.substr(prefix.size()) : error;
}

// The library itself is linked with -z now and bound as a whole here. Those
// that come with it are bound as they want to be: all at once costs a
// millisecond. Never unloaded: libcurl may leave a thread behind that waits for
// a name server.
Library load() {
  Library library;
  const std::string path = besideUs(kTransportLibrary);
  void* const handle =
      dlopen(path.c_str(), RTLD_LAZY | RTLD_LOCAL | lookUpOrder());
  if (handle != nullptr) {
    library.makeTransport =
        reinterpret_cast<MakeTransport*>(dlsym(handle, kMakeTransport));
    library.describeLibraries =
        reinterpret_cast<DescribeLibraries*>(dlsym(handle, kDescribeLibraries));
  }
  if (library.makeTransport == nullptr ||
      library.describeLibraries == nullptr) {
    library.error = path + " cannot be loaded: " + loadError(path);
  }
  return library;
}

const Library& loadedLibrary() {
  static const Library kLibrary = load();
  return kLibrary;
}

}  // namespace

std::unique_ptr<Transport> makeNetworkTransport(
    NetworkTransportOptions options) {
  const Library& library = loadedLibrary();
  if (!library.error.empty()) {
    base::Failure failure;
    failure.kind = base::FailureKind::kInternal;
    failure.cause = library.error;
    failure.remedy = "install brivel again, with the libraries that it needs";
    return makeUnusableTransport(options.origin, std::move(failure));
  }
  std::unique_ptr<Transport> transport;
  library.makeTransport(options, transport);
  return transport;
}

std::string networkLibraries() {
  const Library& library = loadedLibrary();
  if (!library.error.empty()) {
    return library.error;
  }
  std::string text;
  library.describeLibraries(text);
  return text;
}

}  // namespace http
