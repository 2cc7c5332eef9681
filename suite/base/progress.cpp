#include "suite/base/progress.h"

namespace base {
namespace {

Progress* observer = nullptr;

}  // namespace

void setProgress(Progress* progress) { observer = progress; }

Progress* progress() { return observer; }

}  // namespace base
