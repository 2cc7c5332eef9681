#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "suite/local/facts/files.h"

namespace local {

/// The root of the file systems that describe a machine: "/" for the running
/// one, or the folder of a recorded one, in which sys/, proc/, dev/ and usr/
/// lie as they do below "/". Paths given to it are absolute ("/sys/class").
/// In a recorded machine nothing outside its folder is ever read, whatever
/// its symbolic links say.
class Root {
 public:
  /// `folder` empty or "/": the running machine.
  explicit Root(std::string folder = "/");

  /// Whether this is a recorded machine and not the running one.
  bool recorded() const { return !prefix_.empty(); }

  /// Where a path of the machine lies in the file systems of this process.
  std::string path(const std::string& path) const { return prefix_ + path; }

  /// Whether the path exists, as far as this user can see.
  bool exists(const std::string& path) const;

  /// Reads a regular file up to `limit` bytes; a longer one is kFailed.
  Content read(const std::string& path, std::size_t limit) const;

  /// The single line that an attribute file of the kernel holds, without its
  /// line end and outer blanks; empty when it cannot be read.
  std::string line(const std::string& path) const;

  /// Names in a folder, sorted; none when it cannot be read.
  std::vector<std::string> list(const std::string& path) const;

  /// What a symbolic link points at, as it stands; empty when it is none.
  std::string link(const std::string& path) const;

 private:
  bool within(const std::string& hostPath) const;

  std::string prefix_;     // Without trailing slash; empty for "/".
  std::string canonical_;  // The prefix without symbolic links.
};

}  // namespace local
