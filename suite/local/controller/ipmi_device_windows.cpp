#include "suite/local/controller/ipmi_device.h"

namespace local {

// Windows keeps its controller behind a driver of its own, which has no device
// node to open: there is no such device for us.
IpmiDevice::IpmiDevice(const Root& root) {
  if (!root.recorded()) {
    path_ = "Windows shows programs none";
  }
}

IpmiDevice::~IpmiDevice() = default;

std::optional<ipmi::IpmiResponse> IpmiDevice::ask(
    const ipmi::IpmiRequest& /*request*/,
    std::chrono::milliseconds /*timeout*/) {
  return std::nullopt;
}

}  // namespace local
