#pragma once

#include "suite/redfish/utf16_windows.h"

namespace connection {

// Texts for the interfaces of Windows, as the host program needs them, too.
using redfish::toUtf16;
using redfish::toUtf8;

}  // namespace connection
