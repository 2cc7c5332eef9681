#include "suite/connection/await_input.h"

#include "suite/redfish/interrupt.h"

namespace connection {

bool awaitInput(int /*descriptor*/) { return !redfish::interrupted(); }

}  // namespace connection
