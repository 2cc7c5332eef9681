#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "suite/ipmi/ipmi_message.h"
#include "suite/local/facts/root.h"

namespace local {

/// The system interface to the machine's own controller: a device node of
/// the kernel's IPMI driver. Closed when destroyed.
class IpmiDevice {
 public:
  /// Opens the first node that there is: /dev/ipmi0, /dev/ipmi/0,
  /// /dev/ipmidev/0.
  explicit IpmiDevice(const Root& root);
  ~IpmiDevice();

  IpmiDevice(const IpmiDevice&) = delete;
  IpmiDevice& operator=(const IpmiDevice&) = delete;

  /// The result of opening it; kMissing if there is no node.
  Access access() const { return access_; }

  /// The node that was tried last.
  const std::string& path() const { return path_; }

  /// Sends a command and waits for its answer. Returns nullopt if none arrives
  /// in time, or the device fails.
  std::optional<ipmi::IpmiResponse> ask(const ipmi::IpmiRequest& request,
                                        std::chrono::milliseconds timeout);

 private:
  std::string path_ = "/dev/ipmi0";
  Access access_ = Access::kMissing;
  int file_ = -1;
  long sequence_ = 0;
};

}  // namespace local
