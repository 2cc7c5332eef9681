#pragma once

#include <memory>
#include <string>

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
// What network_transport.h declares has two definitions. That of libbrivel.so
// is transport_library.cpp: it loads the library and asks it. That of the
// library itself, and of programs that are linked with libcurl, is
// curl_transport.cpp and curl_versions.cpp.

/// File of the library, beside libbrivel.so.
constexpr char kTransportLibrary[] = "libbrivel-http.so";

// Names and types of the library's two functions.

/// Sets `transport` to a new
/// transport for `options`, which it takes over. May throw what
/// `makeNetworkTransport` throws.
constexpr char kMakeTransport[] = "brivelMakeTransport";
using MakeTransport = void(NetworkTransportOptions& options,
                           std::unique_ptr<Transport>& transport);

/// Sets `text` to what `networkLibraries` returns.
constexpr char kDescribeLibraries[] = "brivelDescribeLibraries";
using DescribeLibraries = void(std::string& text);

}  // namespace http
