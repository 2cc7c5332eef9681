#pragma once

#include <optional>
#include <string>

#include "suite/base/failure.h"
#include "suite/connection/in_band.h"
#include "suite/connection/password/credential.h"
#include "suite/ipmi/ipmi_message.h"
#include "suite/local/machine.h"

namespace connection {

/// An account that a controller made for this machine, and its password.
struct MadeAccount {
  std::string user;
  Credential credential;
};

/// Has the machine's controller make an account, over the local IPMI device
/// (DSP0270, credential bootstrapping). The account is good on the host
/// interface alone and goes with the next reset of the controller or the
/// machine. Nothing, and why in `failure`, when there is none to be had.
std::optional<MadeAccount> bootstrapAccount(const local::Machine& machine,
                                            const FoundController& controller,
                                            base::Failure& failure);

/// What the answer to the request says; `device` is named in the failure.
std::optional<MadeAccount> madeAccount(ipmi::IpmiResponse response,
                                       const std::string& device,
                                       base::Failure& failure);

/// The SHA-256 digest of the certificate of the machine's controller, as it
/// tells it over the local IPMI device (DSP0270); empty when it does not.
std::string namedCertificate(const local::Machine& machine);

}  // namespace connection
