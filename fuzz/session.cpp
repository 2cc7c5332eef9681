// Login and logout: where the service says that its sessions are, what it
// grants, and what it answers to a login. No secret stands in what is told of a
// failure, whatever the service repeats.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "fuzz/answers.h"
#include "fuzz/budget.h"
#include "fuzz/require.h"
#include "suite/base/failure.h"
#include "suite/redfish/service.h"

namespace {

void checkFailure(const std::optional<base::Failure>& failure) {
  if (!failure) {
    return;
  }
  const std::string text = base::describe(*failure);
  // "ada:Wal-kure" in base 64 without its padding.
  for (const char* secret : {"Wal-kure", "YWRhOldhbC1rdXJl"}) {
    require(text.find(secret) == std::string::npos);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const StepBudget budget(2000, 50, size);
  redfish::ServiceOptions options;
  options.user = "ada";
  options.password = base::Secret("Wal-kure");
  redfish::Service service(std::move(options),
                           std::make_unique<AnsweringTransport>(input));
  checkFailure(service.open());
  redfish::Selection selection;
  selection.wants = redfish::kWantSystem;
  checkFailure(service.read(selection));
  service.close();
  const redfish::ServiceStats stats = service.stats();
  require(stats.logouts <= stats.logins && stats.logins <= 2);
  return 0;
}
