#include "suite/local/fans.h"

namespace local {

// The class that Windows has for fans holds no speeds.
bool systemTellsOfFans() { return false; }

}  // namespace local
