#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace bmc {

/// Files by path inside a folder, with their contents.
using Files = std::map<std::string, std::string>;

/// A recorded tree in a folder that goes away with it.
class RecordedTree {
 public:
  explicit RecordedTree(const Files& files);
  ~RecordedTree();

  RecordedTree(const RecordedTree&) = delete;
  RecordedTree& operator=(const RecordedTree&) = delete;

  std::string folder() const { return folder_.string(); }

 private:
  std::filesystem::path folder_;
};

/// A small service in the short layout: root, Systems with members 1 and 2,
/// and Processors below system 1.
Files smallService();

}  // namespace bmc
