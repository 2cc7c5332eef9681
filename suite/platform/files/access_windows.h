#pragma once

namespace platform {

/// Whether someone other than the file's owner, this process's user, the
/// system and the administrators may read an open file. `file` is a HANDLE
/// with the right READ_CONTROL. Returns true as well if that is unknown.
bool othersCanRead(void* file);

/// Whether an open file belongs to someone other than this process's user, the
/// system and the administrators. `file` as above. Returns true as well if that
/// is unknown.
bool belongsToOthers(void* file);

}  // namespace platform
