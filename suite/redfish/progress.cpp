#include "suite/redfish/progress.h"

namespace redfish {
namespace {

Progress* observer = nullptr;

}  // namespace

void setProgress(Progress* progress) { observer = progress; }

Progress* progress() { return observer; }

}  // namespace redfish
