#pragma once

#include <memory>

#include "suite/connection/settings/target.h"
#include "suite/http/transport.h"

namespace connection {

/// A new transport to a target. Nothing is sent yet.
std::unique_ptr<http::Transport> transportOf(const Target& target);

}  // namespace connection
