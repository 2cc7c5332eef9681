#pragma once

#include <openssl/ssl.h>

namespace http {

/// Makes the connections of a context take up a copy of the TLS session that
/// they are given. OpenSSL marks a session of TLS 1.3 as used up when a
/// handshake with it is done; the others that are given the same one would do
/// a full handshake then, until the server has granted a new one. A server
/// that lets a session serve once only does a full handshake as well, no more.
/// That a session serves once is advised so that nobody on the way can tell
/// that connections are one client's (RFC 8446, C.4); those of one run come
/// from one address at one time, and tell it anyway.
void copySessions(SSL_CTX* context);

}  // namespace http
