#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <unordered_map>

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

  // Folders are named from root_ on, "redfish/v1/Systems".
  Stored readAnswer(const std::string& folder, std::string_view query);
  Stored readFile(const std::string& folder, const std::string& name);

  /// The path of a folder without links and dot segments, as far as it exists.
  /// Sets `error` if that cannot be found out.
  std::string realFolder(const std::string& folder, std::error_code& error);

  std::filesystem::path directory_;
  bool located_ = false;
  std::optional<base::Failure> failure_;
  std::string root_;         ///< The directory's path without links in it.
  std::string_view prefix_;  ///< Start of a target that root_ stands for.
  std::unordered_map<std::string, std::string> folders_;  ///< Real paths.
};

}  // namespace redfish
