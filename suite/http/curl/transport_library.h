#pragma once

#include <memory>

#include "suite/http/network_transport.h"

namespace http {

// The transport by libcurl is a library of its own, libbrivel-http.so. libcurl
// brings some 30 other libraries with it, which take 5 MiB and most of the
// start, and a run that asks nobody over the network (this machine's own parts,
// a recorded server) has no use for them. So libbrivel.so loads the library
// when the first origin on the network is opened, and the library takes what it
// needs of the rooms below it from libbrivel.so (exports.map), so that there is
// one log and one wish to end the run.
//
// `makeNetworkTransport` has two definitions. transport_library.cpp is that of
// libbrivel.so: it loads the library and asks it. curl_transport.cpp is that of
// the library itself, and of programs that are linked with libcurl.

/// File of the library, beside libbrivel.so.
constexpr char kTransportLibrary[] = "libbrivel-http.so";

/// Name and type of the library's one function. It sets `transport` to a new
/// transport for `options`, which it takes over. May throw what
/// `makeNetworkTransport` throws.
constexpr char kMakeTransport[] = "brivelMakeTransport";
using MakeTransport = void(NetworkTransportOptions& options,
                           std::unique_ptr<Transport>& transport);

}  // namespace http
