#pragma once

#include <map>
#include <string>

#include "tests/support/temp_folder.h"

namespace bmc {

/// Files by path inside a folder, with their contents.
using Files = std::map<std::string, std::string>;

/// A recorded tree in a folder that goes away with it.
class RecordedTree {
 public:
  explicit RecordedTree(const Files& files);

  std::string folder() const { return folder_.path().string(); }

 private:
  support::TempFolder folder_;
};

/// A small service in the short layout: root, Systems with members 1 and 2,
/// and Processors below system 1.
Files smallService();

}  // namespace bmc
