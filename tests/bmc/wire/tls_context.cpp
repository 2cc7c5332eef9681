#include "tests/bmc/wire/tls_context.h"

#include <boost/asio/buffer.hpp>
#include <boost/system/error_code.hpp>

#include "tests/bmc/wire/client_hello.h"

namespace bmc {

namespace ssl = boost::asio::ssl;

std::unique_ptr<ssl::context> makeTlsContext(const Identity& identity,
                                             const TlsFaults& faults,
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
  HelloStop::prepare(*context);
  SSL_CTX* handle = context->native_handle();
  if (!faults.resumption) {
    SSL_CTX_set_options(handle, SSL_OP_NO_TICKET);
    SSL_CTX_set_num_tickets(handle, 0);
    SSL_CTX_set_session_cache_mode(handle, SSL_SESS_CACHE_OFF);
  }
  if (faults.maxVersion != 0) {
    // Versions before 1.2 need the lowest security level, and are off in the
    // system's configuration.
    if (SSL_CTX_set_cipher_list(handle, "ALL:@SECLEVEL=0") != 1 ||
        SSL_CTX_set_min_proto_version(handle, TLS1_VERSION) != 1 ||
        SSL_CTX_set_max_proto_version(handle, faults.maxVersion) != 1) {
      error = "TLS version not supported";
      return nullptr;
    }
  }
  return context;
}

}  // namespace bmc
