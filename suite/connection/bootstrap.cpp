#include "suite/connection/bootstrap.h"

#include <chrono>
#include <utility>

#include "suite/base/secret.h"
#include "suite/local/controller/ipmi_device.h"

namespace connection {
namespace {

using base::Failure;
using base::FailureKind;
using local::Access;

// Making an account takes a controller a moment.
constexpr std::chrono::milliseconds kTimeout(10000);
constexpr std::uint8_t kDisabled = 0x80;

constexpr const char* kOtherLogin =
    "name a user in [inband] of the settings, or by --user";

Failure ownFailure(FailureKind kind, std::string cause) {
  return {kind, "this server", "", std::move(cause), kOtherLogin};
}

}  // namespace

base::Result<MadeAccount> madeAccount(ipmi::IpmiResponse response,
                                      const std::string& device) {
  auto account = ipmi::bootstrapAccount(response);
  const std::uint8_t completion = response.completion;
  base::wipe(response.data);
  if (!account) {
    return ownFailure(
        FailureKind::kNoBootstrapAccount,
        completion == kDisabled
            ? "the controller does not make accounts: credential "
              "bootstrapping is disabled in it"
            : "the controller makes no account: its answer over " + device +
                  " is not understood (completion code " +
                  std::to_string(completion) + ")");
  }
  return MadeAccount{std::move(account->user),
                     {base::Secret(std::move(account->password)),
                      "the controller, over " + device}};
}

std::string namedCertificate(const local::Machine& machine) {
  local::IpmiDevice device(machine.root());
  const auto response = device.ask(ipmi::fingerprintRequest(), kTimeout);
  return response ? ipmi::certificateDigest(*response).value_or("") : "";
}

base::Result<MadeAccount> bootstrapAccount(const local::Machine& machine,
                                           const FoundController& controller) {
  if (!controller.bootstrapsCredentials) {
    return ownFailure(FailureKind::kNoBootstrapAccount,
                      "the controller does not make accounts, as the "
                      "firmware says of its host interface");
  }
  local::IpmiDevice device(machine.root());
  if (device.access() == Access::kDenied) {
    return Failure{FailureKind::kNotPermitted, "this server", "",
                   device.path() + " may be opened by root only",
                   "run brivel as root"};
  }
  auto response = device.ask(ipmi::bootstrapRequest(), kTimeout);
  if (!response) {
    return ownFailure(
        FailureKind::kIpmiDevice,
        device.access() == Access::kMissing
            ? "there is no IPMI device (" + device.path() +
                  ") to have an account made over"
            : "the IPMI device " + device.path() + " does not answer");
  }
  return madeAccount(*std::move(response), device.path());
}

}  // namespace connection
