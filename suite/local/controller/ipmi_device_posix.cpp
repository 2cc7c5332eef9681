#include "suite/local/controller/ipmi_device.h"

#include <fcntl.h>
#include <linux/ipmi.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

namespace local {
namespace {

using Clock = std::chrono::steady_clock;

// Opens a character device; -1, and the reason, when that is not possible.
int openNode(const std::string& path, Access& access) {
  const int file = open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) {
    access = errno == EACCES || errno == EPERM ? Access::kDenied
             : errno == ENOENT || errno == ENOTDIR || errno == ENXIO ||
                     errno == ENODEV
                 ? Access::kMissing
                 : Access::kFailed;
    return -1;
  }
  struct stat status = {};
  if (fstat(file, &status) != 0 || !S_ISCHR(status.st_mode)) {
    close(file);
    access = Access::kFailed;
    return -1;
  }
  access = Access::kRead;
  return file;
}

// Waits until the device has something to read, or the time is over.
bool waitFor(int file, Clock::time_point until) {
  while (true) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        until - Clock::now());
    if (left.count() <= 0) {
      return false;
    }
    pollfd entry = {file, POLLIN, 0};
    const int ready = poll(&entry, 1, static_cast<int>(left.count()));
    if (ready > 0) {
      return (entry.revents & POLLIN) != 0;
    }
    if (ready == 0 || errno != EINTR) {
      return false;
    }
  }
}

}  // namespace

IpmiDevice::IpmiDevice(const Root& root) {
  for (const char* node : {"/dev/ipmi0", "/dev/ipmi/0", "/dev/ipmidev/0"}) {
    if (!root.exists(node)) {
      continue;
    }
    file_ = openNode(root.path(node), access_);
    path_ = node;
    if (access_ != Access::kMissing) {
      return;
    }
  }
}

IpmiDevice::~IpmiDevice() {
  if (file_ >= 0) {
    close(file_);
  }
}

std::optional<ipmi::IpmiResponse> IpmiDevice::ask(
    const ipmi::IpmiRequest& request, std::chrono::milliseconds timeout) {
  if (file_ < 0) {
    return std::nullopt;
  }
  std::vector<unsigned char> data(request.data.begin(), request.data.end());
  ipmi_system_interface_addr address = {};
  address.addr_type = IPMI_SYSTEM_INTERFACE_ADDR_TYPE;
  address.channel = IPMI_BMC_CHANNEL;
  ipmi_req message = {};
  message.addr = reinterpret_cast<unsigned char*>(&address);
  message.addr_len = sizeof address;
  message.msgid = ++sequence_;
  message.msg.netfn = request.netFunction;
  message.msg.cmd = request.command;
  message.msg.data = data.data();
  message.msg.data_len = static_cast<unsigned short>(data.size());
  if (ioctl(file_, IPMICTL_SEND_COMMAND, &message) < 0) {
    return std::nullopt;
  }

  const Clock::time_point until = Clock::now() + timeout;
  while (waitFor(file_, until)) {
    unsigned char buffer[IPMI_MAX_MSG_LENGTH] = {};
    ipmi_addr from = {};
    ipmi_recv answer = {};
    answer.addr = reinterpret_cast<unsigned char*>(&from);
    answer.addr_len = sizeof from;
    answer.msg.data = buffer;
    answer.msg.data_len = sizeof buffer;
    if (ioctl(file_, IPMICTL_RECEIVE_MSG_TRUNC, &answer) < 0) {
      return std::nullopt;
    }
    // A late answer to an earlier question is not this one's.
    if (answer.recv_type != IPMI_RESPONSE_RECV_TYPE ||
        answer.msgid != sequence_ || answer.msg.data_len == 0) {
      continue;
    }
    ipmi::IpmiResponse response;
    response.completion = buffer[0];
    response.data.assign(reinterpret_cast<const char*>(buffer + 1),
                         answer.msg.data_len - 1U);
    return response;
  }
  return std::nullopt;
}

}  // namespace local
