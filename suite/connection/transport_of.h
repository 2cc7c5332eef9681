#pragma once

#include <memory>

#include "suite/connection/settings/target.h"
#include "suite/http/transport.h"

namespace connection {

/// The way to a target, over which nothing has been asked yet.
std::unique_ptr<http::Transport> transportOf(const Target& target);

}  // namespace connection
