// Settings files as people write them.
#include "suite/connection/settings/settings.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto settings =
      connection::readSettings(text, "fuzz.toml", "/home/fuzz");
  if (!settings) {
    check(settings.error().cause.find("fuzz.toml") != std::string::npos);
    return 0;
  }
  const auto sane = [](const connection::TargetSettings& target) {
    check(!target.maxConnections ||
          (*target.maxConnections >= 1 && *target.maxConnections <= 16));
    check(!target.timeout || target.timeout->count() > 0);
  };
  sane(settings->defaults);
  for (const auto& [name, target] : settings->targets) {
    sane(target.settings);
  }
  check(!settings->logLevel ||
        (*settings->logLevel >= 0 && *settings->logLevel <= 4));
  return 0;
}
