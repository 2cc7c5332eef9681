// Preloaded into the program: one allocation finds no memory. The first ones,
// which the start of the libraries makes before `main`, are not counted.
//
// BRIVEL_DENY_AT     which allocation; 0: none
// BRIVEL_DENY_COUNT  the file that receives how many there were

#include <dlfcn.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

// The C library's own functions, and its start of a program, by its names.
// NOLINTBEGIN(bugprone-reserved-identifier, readability-identifier-naming)
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
int __libc_start_main(int (*program)(int, char**, char**), int argc,
                      char** argv, void (*init)(), void (*fini)(),
                      void (*loaderFini)(), void* stackEnd);
}
// NOLINTEND(bugprone-reserved-identifier, readability-identifier-naming)

namespace {

std::atomic<bool> begun{false};
std::atomic<long> made{0};
long denied = 0;
int (*realMain)(int, char**, char**) = nullptr;

bool isDenied() {
  if (!begun.load() || ++made != denied) {
    return false;
  }
  errno = ENOMEM;
  return true;
}

int countedMain(int argc, char** argv, char** environment) {
  const char* const at = std::getenv("BRIVEL_DENY_AT");
  denied = at == nullptr ? 0 : std::strtol(at, nullptr, 10);
  begun = true;
  const int status = realMain(argc, argv, environment);
  begun = false;
  if (const char* const path = std::getenv("BRIVEL_DENY_COUNT")) {
    if (std::FILE* const file = std::fopen(path, "w")) {
      std::fprintf(file, "%ld", made.load());
      std::fclose(file);
    }
  }
  return status;
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) noexcept {
  return isDenied() ? nullptr : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) noexcept {
  return isDenied() ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size) noexcept {
  return isDenied() ? nullptr : __libc_realloc(memory, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
  return isDenied() ? nullptr : __libc_memalign(alignment, size);
}

int posix_memalign(void** memory, std::size_t alignment,
                   std::size_t size) noexcept {
  *memory = aligned_alloc(alignment, size);
  return *memory == nullptr ? ENOMEM : 0;
}

int __libc_start_main(int (*program)(int, char**, char**), int argc,
                      char** argv, void (*init)(), void (*fini)(),
                      void (*loaderFini)(), void* stackEnd) {
  realMain = program;
  const auto next = reinterpret_cast<decltype(&__libc_start_main)>(
      dlsym(RTLD_NEXT, "__libc_start_main"));
  return next(countedMain, argc, argv, init, fini, loaderFini, stackEnd);
}

}  // extern "C"
