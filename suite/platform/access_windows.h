#pragma once

namespace platform {

/// Whether someone other than the file's owner, this process's user, the
/// system and the administrators may read an open file. `file` is a HANDLE
/// with the right READ_CONTROL. True as well when that cannot be found out.
bool othersCanRead(void* file);

/// Whether an open file belongs to someone other than this process's user, the
/// system and the administrators. `file` as above. True as well when that
/// cannot be found out.
bool belongsToOthers(void* file);

}  // namespace platform
