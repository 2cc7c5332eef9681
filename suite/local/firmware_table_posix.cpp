#include "suite/local/firmware_table.h"

namespace local {

FirmwareTable runningTable() { return tableInFolders(Root()); }

}  // namespace local
