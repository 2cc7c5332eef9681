#pragma once

#include <string>

#include "suite/base/result.h"
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

/// Lets the machine's controller make an account, over the local IPMI device
/// (DSP0270, credential bootstrapping). The account is valid on the host
/// interface only, until the controller or the machine is reset.
base::Result<MadeAccount> bootstrapAccount(const local::Machine& machine,
                                           const FoundController& controller);

/// Reads the answer to that request; a failure names the `device`.
base::Result<MadeAccount> madeAccount(ipmi::IpmiResponse response,
                                      const std::string& device);

/// The SHA-256 digest of the certificate of the machine's controller, as it
/// names it over the local IPMI device (DSP0270); empty if it does not.
std::string namedCertificate(const local::Machine& machine);

}  // namespace connection
