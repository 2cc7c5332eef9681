#pragma once

#include "suite/redfish/interrupt.h"
#include "suite/redfish/loader_pages.h"
#include "suite/redfish/progress.h"

namespace connection {

// How the host watches a run from above: the user's wish to end it, how far
// the reading of a target has come, and the memory that it need not hold.

using redfish::installInterruptHandlers;
using redfish::interrupted;
using redfish::Progress;
using redfish::releaseLoaderPages;
using redfish::setProgress;

}  // namespace connection
