#include "suite/local/smbios/firmware_table.h"

namespace local {

FirmwareTable runningTable() { return tableInFolders(Root()); }

}  // namespace local
