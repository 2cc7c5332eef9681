#include "suite/redfish/recorded/recorded_tree.h"

#include <algorithm>
#include <fstream>
#include <utility>

#include "suite/base/text.h"
#include "suite/http/transport.h"
#include "suite/redfish/graph/json.h"
#include "suite/redfish/graph/uri.h"

namespace redfish {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kFileName = "index.json";
constexpr std::string_view kServiceRoot = "/redfish/v1";
constexpr std::string_view kServiceRootType = "#ServiceRoot.";

base::Failure failureOf(base::FailureKind kind, std::string cause,
                        std::string remedy) {
  return {kind, "", "", std::move(cause), std::move(remedy)};
}

base::Failure unreadable(std::string cause) {
  return failureOf(base::FailureKind::kFileUnreadable, std::move(cause),
                   "check the recording");
}

// Whether the file system says that there is no such file. A path that leads
// through a file, and a name that no file can have, say the same.
bool isMissing(const std::error_code& error) {
  return error == std::errc::no_such_file_or_directory ||
         error == std::errc::not_a_directory ||
         error == std::errc::filename_too_long;
}

bool isInside(const fs::path& file, const fs::path& root) {
  return std::mismatch(root.begin(), root.end(), file.begin(), file.end())
             .first == root.end();
}

bool isServiceRoot(const std::string& body) {
  std::string reason;
  const std::optional<json::object> object = parseObject(body, reason);
  return object &&
         stringAt(*object, "@odata.type").substr(0, kServiceRootType.size()) ==
             kServiceRootType;
}

}  // namespace

RecordedTree::RecordedTree(fs::path directory)
    : directory_(std::move(directory)) {}

RecordedTree::Stored RecordedTree::read(std::string_view target) {
  if (!located_) {
    failure_ = locate();
    located_ = true;
  }
  if (failure_) {
    Stored failed;
    failed.failure = failure_;
    return failed;
  }
  const std::size_t mark = std::min(target.find('?'), target.size());
  const std::string path = decodePercent(target.substr(0, mark));
  const std::string query =
      distinctQuery(target.substr(std::min(mark + 1, target.size())));
  std::string_view below = path;
  if (below.substr(0, prefix_.size()) != prefix_) {
    return {};
  }
  below.remove_prefix(prefix_.size());
  if (!below.empty() && below.front() != '/') {
    return {};
  }
  while (!below.empty() && below.front() == '/') {
    below.remove_prefix(1);
  }
  const fs::path folder = root_ / fs::u8path(below);
  if (!query.empty()) {
    Stored own = readAnswer(folder, query);
    if (own.exists || own.answer || own.failure) {
      return own;
    }
  }
  return readAnswer(folder, "");
}

RecordedTree::Stored RecordedTree::readAnswer(const fs::path& folder,
                                              std::string_view query) const {
  Stored stored = readFile(folder / bodyFileName(query));
  if (stored.failure) {
    return stored;
  }
  // Seldom there, and a look is cheaper than a reading.
  const fs::path file = folder / answerFileName(query);
  std::error_code unknown;
  if (fs::symlink_status(file, unknown).type() == fs::file_type::not_found) {
    return stored;
  }
  const Stored beside = readFile(file);
  if (beside.failure) {
    return beside;
  }
  if (beside.exists) {
    stored.answer = parseStoredAnswer(beside.body);
    if (!stored.answer) {
      stored.failure =
          unreadable(answerFileName(query) + " beside it is not understood");
    } else if (stored.answer->failure) {
      stored.failure = stored.answer->failure;
    }
  }
  return stored;
}

std::optional<base::Failure> RecordedTree::locate() {
  std::error_code error;
  const fs::file_status status = fs::status(directory_, error);
  if (status.type() == fs::file_type::not_found) {
    return failureOf(base::FailureKind::kDirectoryMissing,
                     "there is no such directory", "check the path");
  }
  if (error) {
    return unreadable(error.message());
  }
  if (!fs::is_directory(status)) {
    return failureOf(base::FailureKind::kDirectoryMissing,
                     "this is no directory",
                     "name the directory that holds the recording");
  }
  root_ = fs::canonical(directory_, error);
  if (error) {
    return unreadable(error.message());
  }

  const Stored whole =
      readFile(root_ / fs::u8path(kServiceRoot.substr(1)) / kFileName);
  if (whole.failure) {
    return whole.failure;
  }
  if (whole.exists) {
    return std::nullopt;
  }
  const Stored brief = readFile(root_ / kFileName);
  if (brief.failure) {
    return brief.failure;
  }
  prefix_ = kServiceRoot;
  if (brief.exists && isServiceRoot(brief.body)) {
    return std::nullopt;
  }
  std::error_code unknown;
  if (fs::is_directory(root_ / "sys", unknown)) {
    return failureOf(base::FailureKind::kFileUnreadable,
                     "the directory holds a recorded machine, not a recorded "
                     "service",
                     "name it by --local-root instead");
  }
  return failureOf(
      base::FailureKind::kFileUnreadable,
      "the directory holds no recorded service",
      "name a directory with redfish/v1/index.json, or one whose index.json "
      "is a service root");
}

RecordedTree::Stored RecordedTree::readFile(const fs::path& file) const {
  Stored stored;
  std::error_code error;
  const fs::path real = fs::weakly_canonical(file, error);
  if (isMissing(error)) {
    return stored;
  }
  if (error) {
    stored.failure = unreadable(error.message());
    return stored;
  }
  if (!isInside(real, root_)) {
    stored.failure =
        failureOf(base::FailureKind::kRefusedLink,
                  "the file lies outside the recording", "check its links");
    return stored;
  }
  const fs::file_status status = fs::status(real, error);
  if (status.type() == fs::file_type::not_found) {
    return stored;
  }
  // Anything else might never end, or never begin.
  if (status.type() != fs::file_type::regular) {
    stored.failure =
        unreadable(error ? error.message() : "index.json is no regular file");
    return stored;
  }
  const std::uintmax_t size = fs::file_size(real, error);
  if (error || size > http::kMaxBodyBytes) {
    stored.failure =
        error
            ? unreadable(error.message())
            : failureOf(base::FailureKind::kBadContent,
                        "the file is larger than " +
                            std::to_string(http::kMaxBodyBytes >> 20U) + " MiB",
                        "");
    return stored;
  }
  std::ifstream stream(real, std::ios::binary);
  stored.body.resize(static_cast<std::size_t>(size));
  stream.read(stored.body.data(), static_cast<std::streamsize>(size));
  if (!stream) {
    stored.body.clear();
    stored.failure = unreadable("the file cannot be read");
    return stored;
  }
  stored.exists = true;
  return stored;
}

}  // namespace redfish
