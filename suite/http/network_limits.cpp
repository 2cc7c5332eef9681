#include "suite/http/network_limits.h"

namespace http {

const char* userAgent() { return "brivel/" BRIVEL_VERSION; }

}  // namespace http
