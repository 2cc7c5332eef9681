#include "suite/http/curl/flood_guard.h"

#include "suite/http/network_limits.h"

namespace http {
namespace {

// With this mark nothing more is read from a connection, as after the closing
// alert of the other side; what of this record is left is dropped.
void onRecord(int isWritten, int /*version*/, int /*type*/,
              const void* /*data*/, std::size_t /*size*/, SSL* connection,
              void* guard) {
  if (isWritten == 0 && static_cast<const FloodGuard*>(guard)->exceeded()) {
    SSL_set_shutdown(connection,
                     SSL_get_shutdown(connection) | SSL_RECEIVED_SHUTDOWN);
  }
}

}  // namespace

void FloodGuard::watch(SSL_CTX* context) {
  SSL_CTX_set_msg_callback(context, &onRecord);
  SSL_CTX_set_msg_callback_arg(context, this);
}

void FloodGuard::begin(base::Clock::time_point end) {
  begun_ = base::Clock::now();
  end_ = end;
}

bool FloodGuard::exceeded() const {
  const base::Clock::time_point now = base::Clock::now();
  return now > begun_ + kGrace && (now >= end_ || interrupt_.asked());
}

}  // namespace http
