#pragma once

namespace platform {

/// Whether someone other than the file's owner, this process's user, the
/// system and the administrators may read an open file. `file` is a HANDLE
/// with the right READ_CONTROL. True as well when that cannot be found out.
bool othersCanRead(void* file);

}  // namespace platform
