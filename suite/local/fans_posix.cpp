#include "suite/local/fans.h"

namespace local {

bool systemTellsOfFans() { return true; }

}  // namespace local
