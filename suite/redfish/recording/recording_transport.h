#pragma once

#include <memory>

#include "suite/http/transport.h"
#include "suite/redfish/recording/recording.h"

namespace redfish {

/// A transport that asks through another one, and keeps what is read in a
/// recording, which must outlive it. Of a login nothing is kept but what must
/// not be recorded.
std::unique_ptr<http::Transport> makeRecordingTransport(
    std::unique_ptr<http::Transport> transport, Recording& recording);

}  // namespace redfish
