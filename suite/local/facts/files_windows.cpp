#include "suite/local/facts/files.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

namespace local {
namespace {

namespace fs = std::filesystem;

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

Access accessOf(const std::error_code& error) {
  if (error == std::errc::no_such_file_or_directory ||
      error == std::errc::not_a_directory) {
    return Access::kMissing;
  }
  return error == std::errc::permission_denied ? Access::kDenied
                                               : Access::kFailed;
}

}  // namespace

std::string realPath(const std::string& path) {
  std::error_code error;
  const fs::path real = fs::canonical(fs::u8path(path), error);
  return error ? std::string() : real.generic_u8string();
}

bool exists(const std::string& path) {
  std::error_code error;
  return fs::exists(fs::u8path(path), error);
}

Content readFile(const std::string& path, std::size_t limit) {
  std::error_code error;
  const fs::path file = fs::u8path(path);
  const fs::file_status status = fs::status(file, error);
  if (status.type() == fs::file_type::none) {
    return {accessOf(error), ""};
  }
  if (!fs::exists(status)) {
    return {Access::kMissing, ""};
  }
  if (!fs::is_regular_file(status)) {
    return {Access::kFailed, ""};
  }
  const std::unique_ptr<std::FILE, CloseFile> stream(
      _wfopen(file.c_str(), L"rb"));
  if (stream == nullptr) {
    return {accessOf({errno, std::generic_category()}), ""};
  }
  Content content;
  char chunk[16384];
  while (const std::size_t count =
             std::fread(chunk, 1, sizeof chunk, stream.get())) {
    content.bytes.append(chunk, count);
    if (content.bytes.size() > limit) {
      return {Access::kFailed, ""};
    }
  }
  if (std::ferror(stream.get()) != 0) {
    return {Access::kFailed, ""};
  }
  content.access = Access::kRead;
  return content;
}

std::vector<std::string> namesIn(const std::string& folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(fs::u8path(folder), error), end;
       !error && entry != end; entry.increment(error)) {
    names.push_back(entry->path().filename().u8string());
  }
  return names;
}

std::string linkTarget(const std::string& path) {
  std::error_code error;
  const fs::path target = fs::read_symlink(fs::u8path(path), error);
  return error ? std::string() : target.generic_u8string();
}

}  // namespace local
