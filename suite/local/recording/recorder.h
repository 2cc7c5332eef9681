#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "suite/local/facts/root.h"
#include "suite/masking/masker.h"
#include "suite/platform/files/private_folder.h"

namespace local {

/// Copies what the suite reads of a machine, and nothing else, into a folder
/// that `brivel --local-root` reads afterwards.
class Recorder {
 public:
  /// `masker`: masks what identifies the machine; null: nothing does. Both must
  /// outlive the recorder.
  Recorder(Root from, platform::PrivateFolder& folder, masking::Masker* masker);

  /// Records everything. What is there and cannot be read, or cannot be
  /// written, is told by `problems`; the rest is recorded all the same.
  void record();

  const std::vector<std::string>& problems() const { return problems_; }

  /// How many files were written.
  std::size_t files() const { return files_; }

 private:
  void note();
  void recordTable();
  void recordTexts();
  void recordFans();
  void recordProcessors();
  void recordAdapters();
  void recordNames();
  void recordNetwork();

  void forEachAdapter(
      const std::function<void(const std::string& name,
                               const std::string& place)>& use) const;
  std::string masked(const std::string& value);
  void copy(const std::string& path);
  void copyText(const std::string& path);
  void copyLink(const std::string& path);
  void write(const std::string& path, const std::string& bytes);

  Root from_;
  platform::PrivateFolder& folder_;
  masking::Masker* masker_;
  std::vector<std::string> problems_;
  std::size_t files_ = 0;
};

}  // namespace local
