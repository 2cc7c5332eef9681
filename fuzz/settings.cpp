// Settings files as people write them.
#include "suite/connection/settings/settings.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/budget.h"
#include "fuzz/require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const StepBudget budget(2000, 100, size);
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto settings =
      connection::readSettings(text, "fuzz.toml", "/home/fuzz");
  if (!settings) {
    require(settings.error().cause.find("fuzz.toml") != std::string::npos);
    return 0;
  }
  const auto sane = [](const connection::TargetSettings& target) {
    require(!target.maxConnections ||
            (*target.maxConnections >= 1 && *target.maxConnections <= 16));
    require(!target.timeout || target.timeout->count() > 0);
  };
  sane(settings->defaults);
  for (const auto& [name, target] : settings->targets) {
    sane(target.settings);
  }
  require(!settings->logLevel ||
          (*settings->logLevel >= 0 && *settings->logLevel <= 4));
  return 0;
}
