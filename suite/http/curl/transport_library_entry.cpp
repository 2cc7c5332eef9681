#include <string>
#include <utility>

#include "suite/http/curl/transport_library.h"

// The two names that libbrivel-http.so shows; their types are checked here.
extern "C" {
__attribute__((visibility("default"))) http::MakeTransport brivelMakeTransport;
__attribute__((visibility("default")))
http::DescribeLibraries brivelDescribeLibraries;
}

void brivelMakeTransport(http::NetworkTransportOptions& options,
                         std::unique_ptr<http::Transport>& transport) {
  transport = http::makeNetworkTransport(std::move(options));
}

void brivelDescribeLibraries(std::string& text) {
  text = http::networkLibraries();
}
