#pragma once

#include <boost/asio/ssl/context.hpp>
#include <memory>
#include <string>

#include "tests/bmc/certificate.h"

namespace bmc {

/// A server's TLS context for a certificate (chain) and its key. Null, and the
/// reason in `error`, when OpenSSL refuses them.
std::unique_ptr<boost::asio::ssl::context> makeTlsContext(
    const Identity& identity, std::string& error);

}  // namespace bmc
