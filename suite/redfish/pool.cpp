#include "suite/redfish/pool.h"

#include <utility>

namespace redfish {

Pool::~Pool() { close(); }

std::int64_t Pool::add(std::unique_ptr<Service> service) {
  services_.push_back(std::move(service));
  return static_cast<std::int64_t>(services_.size());
}

Service* Pool::find(std::int64_t handle) {
  const std::int64_t place = handle == 0 ? 1 : handle;
  if (place < 1 || place > static_cast<std::int64_t>(services_.size())) {
    return nullptr;
  }
  return services_[static_cast<std::size_t>(place - 1)].get();
}

void Pool::close() noexcept {
  for (const auto& service : services_) {
    service->close();
  }
}

}  // namespace redfish
