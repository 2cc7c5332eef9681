#include "suite/connection/password/password_file.h"

#include <windows.h>
#include <fcntl.h>
#include <io.h>

#include <boost/nowide/convert.hpp>
#include <cerrno>
#include <cstring>

#include "suite/connection/password/password_line.h"
#include "suite/platform/files/access_windows.h"
#include "suite/platform/files/descriptor.h"

namespace connection {
using base::Failure;
using base::FailureKind;

base::Result<base::Secret> readPasswordFile(const std::string& file) {
  const platform::Descriptor descriptor(
      _wopen(boost::nowide::widen(file).c_str(),
             _O_RDONLY | _O_BINARY | _O_NOINHERIT));
  if (descriptor.number() < 0) {
    const int reason = errno;
    Failure failure;
    failure.kind = reason == ENOENT ? FailureKind::kCredentialMissing
                                    : FailureKind::kFileUnreadable;
    failure.cause = "the password file " + file +
                    (reason == ENOENT ? " does not exist"
                                      : std::string(" cannot be opened: ") +
                                            std::strerror(reason));
    return failure;
  }
  const auto handle =
      reinterpret_cast<HANDLE>(_get_osfhandle(descriptor.number()));
  const bool isFile = GetFileType(handle) == FILE_TYPE_DISK;
  if (isFile && platform::belongsToOthers(handle)) {
    Failure failure;
    failure.kind = FailureKind::kFileUnreadable;
    failure.cause = "the password file " + file +
                    " belongs to another user, who could change it";
    failure.remedy = "use a copy of it";
    return failure;
  }
  if (isFile && platform::othersCanRead(handle)) {
    Failure failure;
    failure.kind = FailureKind::kFileUnreadable;
    failure.cause =
        "the password file " + file + " is open to other users of this machine";
    failure.remedy =
        "run: icacls \"" + file + "\" /inheritance:r /grant:r \"%USERNAME%\":F";
    return failure;
  }
  return readPasswordLine(descriptor.number(), "the password file " + file);
}

}  // namespace connection
