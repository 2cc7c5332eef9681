#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "suite/base/failure.h"
#include "suite/redfish/recorded/stored_answer.h"

namespace redfish {

/// The files of a recorded server. Finds out which of the two layouts the
/// directory has when it is first read, and never reads outside it: links and
/// dot segments are resolved, and what they lead to must lie inside.
class RecordedTree {
 public:
  explicit RecordedTree(std::filesystem::path directory);

  /// What is stored for a resource.
  struct Stored {
    bool exists = false;
    std::string body;
    /// How the answer went, if that is stored beside the body.
    std::optional<StoredAnswer> answer;
    std::optional<base::Failure> failure;  ///< Address and URI are left empty.
  };

  /// Reads what is stored for a target ("/redfish/v1/Systems?..."): for its
  /// query, or else without it. A resource without a file does not exist, which
  /// is no failure. A file that is no regular file, is too large, lies outside
  /// or cannot be read is one, as are a directory that holds no service root
  /// and a request that failed when it was recorded.
  Stored read(std::string_view target);

 private:
  /// Finds root_ and prefix_; nullopt on success.
  std::optional<base::Failure> locate();

  Stored readAnswer(const std::filesystem::path& folder,
                    std::string_view query) const;
  Stored readFile(const std::filesystem::path& file) const;

  std::filesystem::path directory_;
  bool located_ = false;
  std::optional<base::Failure> failure_;
  std::filesystem::path root_;  ///< The directory without links in its path.
  std::string_view prefix_;     ///< Start of a target that root_ stands for.
};

}  // namespace redfish
