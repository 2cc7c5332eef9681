#include "tests/bmc/wire/client_hello.h"

#include <openssl/ssl.h>

#include <cstddef>
#include <optional>

namespace bmc {
namespace {

// Where OpenSSL keeps the stop of a connection.
int place() {
  static const int kPlace =
      SSL_get_ex_new_index(0, nullptr, nullptr, nullptr, nullptr);
  return kPlace;
}

// The length of an extension of the client's message; nothing without it.
std::optional<std::size_t> lengthOf(SSL* connection, unsigned int extension) {
  const unsigned char* bytes = nullptr;
  std::size_t length = 0;
  if (SSL_client_hello_get0_ext(connection, extension, &bytes, &length) != 1) {
    return std::nullopt;
  }
  return length;
}

// TLS 1.3 fills the field of the session's number with random bytes.
bool offers(SSL* connection) {
  if (lengthOf(connection, TLSEXT_TYPE_psk) ||
      lengthOf(connection, TLSEXT_TYPE_session_ticket).value_or(0) > 0) {
    return true;
  }
  const unsigned char* number = nullptr;
  return !lengthOf(connection, TLSEXT_TYPE_supported_versions) &&
         SSL_client_hello_get0_session_id(connection, &number) > 0;
}

}  // namespace

void HelloStop::prepare(boost::asio::ssl::context& context) {
  SSL_CTX_set_client_hello_cb(context.native_handle(), &HelloStop::onHello,
                              nullptr);
}

void HelloStop::install(SSL* connection) {
  SSL_set_ex_data(connection, place(), this);
}

int HelloStop::onHello(SSL* connection, int* /*alert*/, void* /*unused*/) {
  auto* stop = static_cast<HelloStop*>(SSL_get_ex_data(connection, place()));
  if (stop == nullptr || stop->stopped_) {
    return SSL_CLIENT_HELLO_SUCCESS;
  }
  stop->stopped_ = true;
  stop->offersSession_ = offers(connection);
  return SSL_CLIENT_HELLO_RETRY;
}

}  // namespace bmc
