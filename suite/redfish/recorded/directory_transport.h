#pragma once

#include <filesystem>
#include <memory>

#include "suite/http/transport.h"

namespace redfish {

/// A transport that answers GET from a recorded server: a directory that holds
/// the body of /redfish/v1/A/B in redfish/v1/A/B/index.json, or, when its own
/// index.json is a service root, in A/B/index.json. A file that is missing, or
/// that holds an error response, is a 404; answer.json beside it may state
/// another status, a redirect, or why there was no answer. An answer to a query
/// is looked for under its own name first (see stored_answer.h); without it
/// the query is ignored. Other methods are answered 405.
///
/// The directory is looked at when the first request is started. When it is
/// missing, or holds no service root, every request fails and says so.
std::unique_ptr<http::Transport> makeDirectoryTransport(
    std::filesystem::path directory);

}  // namespace redfish
