#include "tests/suite/http/stalled_resolver.h"

#include <dlfcn.h>
#include <netdb.h>

#include <condition_variable>
#include <cstring>
#include <mutex>

namespace {

std::mutex mutex;
std::condition_variable changed;
bool stalled = false;
int held = 0;

void holdWhileStalled() {
  std::unique_lock<std::mutex> lock(mutex);
  ++held;
  changed.wait(lock, [] { return !stalled; });
  --held;
  changed.notify_all();
}

}  // namespace

StalledResolver::StalledResolver() {
  const std::lock_guard<std::mutex> lock(mutex);
  stalled = true;
}

StalledResolver::~StalledResolver() {
  std::unique_lock<std::mutex> lock(mutex);
  stalled = false;
  changed.notify_all();
  changed.wait(lock, [] { return held == 0; });
}

extern "C" __attribute__((visibility("default"))) int getaddrinfo(
    const char* name, const char* service, const addrinfo* hints,
    addrinfo** result) {
  if (name != nullptr && std::strcmp(name, StalledResolver::kName) == 0) {
    holdWhileStalled();
    return EAI_AGAIN;
  }
  using Resolve =
      int (*)(const char*, const char*, const addrinfo*, addrinfo**);
  static const auto kSystem =
      reinterpret_cast<Resolve>(dlsym(RTLD_NEXT, "getaddrinfo"));
  return kSystem(name, service, hints, result);
}
