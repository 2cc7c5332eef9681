#pragma once

#include <boost/asio/ssl/context.hpp>
#include <memory>
#include <string>

#include "tests/bmc/wire/certificate.h"
#include "tests/bmc/wire/server_identity.h"

namespace bmc {

/// A server's TLS context for a certificate (chain) and its key, with the
/// faults that are not the certificate's. Null, and the reason in `error`, when
/// OpenSSL refuses them.
std::unique_ptr<boost::asio::ssl::context> makeTlsContext(
    const Identity& identity, const TlsFaults& faults, std::string& error);

}  // namespace bmc
