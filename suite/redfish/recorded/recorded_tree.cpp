#include "suite/redfish/recorded/recorded_tree.h"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <utility>

#include "suite/base/ascii.h"
#include "suite/base/text.h"
#include "suite/http/transport.h"
#include "suite/redfish/graph/json.h"
#include "suite/redfish/graph/uri.h"

namespace redfish {
namespace {

namespace fs = std::filesystem;

constexpr const char* kFileName = "index.json";
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

// Of two paths without links in them.
bool isInside(const std::string& file, const std::string& root) {
  return base::startsWith(file, root) &&
         (file.size() == root.size() || root.back() == '/' ||
          file[root.size()] == '/');
}

// Whether a name leads elsewhere than below the folder that it stands in.
bool leadsElsewhere(std::string_view name) {
  return name.empty() || name == "." || name == "..";
}

// A path without links in it, as far as it exists.
std::string realPath(const std::string& path, std::error_code& error) {
  return fs::weakly_canonical(fs::u8path(path), error).generic_u8string();
}

bool isServiceRoot(const std::string& body) {
  const auto object = parseObject(body);
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
  const std::string folder(below);
  if (!query.empty()) {
    Stored own = readAnswer(folder, query);
    if (own.exists || own.answer || own.failure) {
      return own;
    }
  }
  return readAnswer(folder, "");
}

RecordedTree::Stored RecordedTree::readAnswer(const std::string& folder,
                                              std::string_view query) {
  Stored stored = readFile(folder, bodyFileName(query));
  if (stored.failure) {
    return stored;
  }
  Stored beside = readFile(folder, answerFileName(query));
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
  root_ = fs::canonical(directory_, error).generic_u8string();
  if (error) {
    return unreadable(error.message());
  }
  folders_.emplace("", root_);

  const Stored whole = readFile(std::string(kServiceRoot.substr(1)), kFileName);
  if (whole.failure) {
    return whole.failure;
  }
  if (whole.exists) {
    return std::nullopt;
  }
  const Stored brief = readFile("", kFileName);
  if (brief.failure) {
    return brief.failure;
  }
  prefix_ = kServiceRoot;
  if (brief.exists && isServiceRoot(brief.body)) {
    return std::nullopt;
  }
  std::error_code unknown;
  if (fs::is_directory(directory_ / "sys", unknown)) {
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

std::string RecordedTree::realFolder(const std::string& folder,
                                     std::error_code& error) {
  const auto known = folders_.find(folder);
  if (known != folders_.end()) {
    return known->second;
  }
  // Step by step from the root, so that each folder is looked at once; paths
  // that no server has are left to the system as a whole.
  constexpr std::ptrdiff_t kMaxSteps = 32;
  const std::size_t slash = folder.rfind('/');
  const std::string name = folder.substr(slash + 1);
  std::string real;
  if (leadsElsewhere(name) ||
      std::count(folder.begin(), folder.end(), '/') > kMaxSteps) {
    real = realPath(root_ + '/' + folder, error);
  } else {
    real = realFolder(
        slash == std::string::npos ? std::string() : folder.substr(0, slash),
        error);
    if (error) {
      return real;
    }
    real += '/' + name;
    const fs::file_status status = fs::symlink_status(fs::u8path(real), error);
    if (isMissing(error)) {
      error.clear();
    } else if (status.type() == fs::file_type::symlink) {
      real = realPath(real, error);
    }
  }
  if (!error) {
    folders_.emplace(folder, real);
  }
  return real;
}

RecordedTree::Stored RecordedTree::readFile(const std::string& folder,
                                            const std::string& name) {
  Stored stored;
  std::error_code error;
  const std::string in = realFolder(folder, error);
  bool inside = !error && isInside(in, root_);
  fs::path file = fs::u8path(in + '/' + name);
  fs::file_status status;
  if (inside) {
    status = fs::symlink_status(file, error);
    if (status.type() == fs::file_type::symlink) {
      const std::string real = realPath(file.u8string(), error);
      inside = !error && isInside(real, root_);
      file = fs::u8path(real);
      status = inside ? fs::status(file, error) : status;
    }
  }
  if (isMissing(error)) {
    return stored;
  }
  if (error) {
    stored.failure = unreadable(error.message());
    return stored;
  }
  if (!inside) {
    stored.failure =
        failureOf(base::FailureKind::kRefusedLink,
                  "the file lies outside the recording", "check its links");
    return stored;
  }
  // Anything else might never end, or never begin.
  if (status.type() != fs::file_type::regular) {
    stored.failure = unreadable("index.json is no regular file");
    return stored;
  }
  std::ifstream stream(file, std::ios::binary | std::ios::ate);
  const std::streamoff size = stream.tellg();  // -1: it was not opened.
  if (size > static_cast<std::streamoff>(http::kMaxBodyBytes)) {
    stored.failure =
        failureOf(base::FailureKind::kBadContent,
                  "the file is larger than " +
                      std::to_string(http::kMaxBodyBytes >> 20U) + " MiB",
                  "");
    return stored;
  }
  stored.body.resize(
      static_cast<std::size_t>(std::max<std::streamoff>(size, 0)));
  stream.seekg(0);
  stream.read(stored.body.data(), size);
  if (!stream) {
    stored.body.clear();
    stored.failure = unreadable("the file cannot be read");
    return stored;
  }
  stored.exists = true;
  return stored;
}

}  // namespace redfish
