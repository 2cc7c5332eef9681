#pragma once

#include <boost/asio/ssl/context.hpp>
#include <memory>
#include <string>

#include "tests/bmc/certificate.h"

namespace bmc {

/// A server's TLS context for a certificate (chain) and its key. `maxVersion`
/// is the newest version spoken, as OpenSSL numbers them; 0: any. Null, and the
/// reason in `error`, when OpenSSL refuses them.
std::unique_ptr<boost::asio::ssl::context> makeTlsContext(
    const Identity& identity, int maxVersion, std::string& error);

}  // namespace bmc
