#include <utility>

#include "suite/http/curl/transport_library.h"

// The one name that libbrivel-http.so shows; its type is checked here.
extern "C" __attribute__((visibility("default")))
http::MakeTransport brivelMakeTransport;

void brivelMakeTransport(http::NetworkTransportOptions& options,
                         std::unique_ptr<http::Transport>& transport) {
  transport = http::makeNetworkTransport(std::move(options));
}
