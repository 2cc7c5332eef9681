#include "tests/bmc/tls_context.h"

#include <boost/asio/buffer.hpp>
#include <boost/system/error_code.hpp>

namespace bmc {

namespace ssl = boost::asio::ssl;

std::unique_ptr<ssl::context> makeTlsContext(const Identity& identity,
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
  return context;
}

}  // namespace bmc
