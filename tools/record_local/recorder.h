#pragma once

#include <string>
#include <vector>

#include "suite/local/facts/root.h"
#include "tools/record_local/masking.h"

namespace record {

/// Copies what the suite reads of a machine, and nothing else, into a folder
/// that `brivel --local-root` reads afterwards.
class Recorder {
 public:
  /// `folder`: made by `record`. `mask`: see masking.h.
  Recorder(local::Root from, std::string folder, bool mask);

  /// Makes the folder and records everything, for the user alone. What is
  /// there and cannot be read, or cannot be written, is told by `problems`;
  /// the rest is recorded all the same. Returns false, and records nothing, if
  /// the folder exists or cannot be made; the one above it must be there.
  bool record();

  const std::vector<std::string>& problems() const { return problems_; }

 private:
  void recordAll();
  void recordTable();
  void recordTexts();
  void recordFans();
  void recordProcessors();
  void recordAdapters();
  void recordNames();
  void recordNetwork();

  void copy(const std::string& path);
  void copyLink(const std::string& path);
  void write(const std::string& path, const std::string& bytes);
  std::string folderOf(const std::string& path);

  local::Root from_;
  std::string folder_;
  bool mask_;
  MacMask macs_;
  std::vector<std::string> problems_;
};

}  // namespace record
