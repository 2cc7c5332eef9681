#include "suite/brivel/exit_status.h"

namespace brivel {

int exitStatusOf(std::int32_t code) {
  return code >= 0 && code < kExitOther ? static_cast<int>(code) : kExitOther;
}

}  // namespace brivel
