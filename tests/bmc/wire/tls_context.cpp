#include "tests/bmc/wire/tls_context.h"

#include <boost/asio/buffer.hpp>
#include <boost/system/error_code.hpp>

namespace bmc {

namespace ssl = boost::asio::ssl;

std::unique_ptr<ssl::context> makeTlsContext(const Identity& identity,
                                             int maxVersion,
                                             std::string& error) {
  auto context = std::make_unique<ssl::context>(ssl::context::tls_server);
  boost::system::error_code code;
  context->use_certificate_chain(boost::asio::buffer(identity.certificate),
                                 code);
  if (!code) {
    context->use_private_key(boost::asio::buffer(identity.key),
                             ssl::context::pem, code);
  }
  if (code) {
    error = "certificate: " + code.message();
    return nullptr;
  }
  if (maxVersion != 0) {
    SSL_CTX* handle = context->native_handle();
    // Versions before 1.2 need the lowest security level, and are off in the
    // system's configuration.
    if (SSL_CTX_set_cipher_list(handle, "ALL:@SECLEVEL=0") != 1 ||
        SSL_CTX_set_min_proto_version(handle, TLS1_VERSION) != 1 ||
        SSL_CTX_set_max_proto_version(handle, maxVersion) != 1) {
      error = "TLS version not supported";
      return nullptr;
    }
  }
  return context;
}

}  // namespace bmc
