#include "suite/http/curl/session_reuse.h"

namespace http {
namespace {

void onProgress(const SSL* connection, int where, int /*result*/) {
  // Not when it is negotiated anew.
  if (where != SSL_CB_HANDSHAKE_START || SSL_in_before(connection) == 0) {
    return;
  }
  const SSL_SESSION* const session = SSL_get_session(connection);
  SSL_SESSION* const copy =
      session == nullptr ? nullptr : SSL_SESSION_dup(session);
  if (copy != nullptr) {
    // OpenSSL passes its connection as const, and allows the change.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
    SSL_set_session(const_cast<SSL*>(connection), copy);
    SSL_SESSION_free(copy);
  }
}

}  // namespace

void copySessions(SSL_CTX* context) {
  SSL_CTX_set_info_callback(context, &onProgress);
}

}  // namespace http
