#pragma once

#include <windows.h>
#include <wincrypt.h>

#include <string>

namespace http {

/// Whether a server's certificate is for a host: one of its alternative names
/// is the host's address or name (RFC 6125, 6.4: a wildcard stands for the
/// whole first label), or it has none of that kind and its common name is the
/// host's name. `host` is a name or an address, IPv6 without brackets and
/// perhaps with a zone.
bool isFor(const CERT_CONTEXT& certificate, const std::string& host);

}  // namespace http
