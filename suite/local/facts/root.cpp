#include "suite/local/facts/root.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

namespace local {
namespace {

namespace fs = std::filesystem;

// Attribute files hold a page at most.
constexpr std::size_t kAttributeLimit = 4096;

Access accessOf(int error) {
  switch (error) {
    case ENOENT:
    case ENOTDIR:
    case ENXIO:
    case ENODEV:
      return Access::kMissing;
    case EACCES:
    case EPERM:
      return Access::kDenied;
    default:
      return Access::kFailed;
  }
}

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

std::FILE* openToRead(const fs::path& path) {
#if defined(_WIN32)
  return _wfopen(path.c_str(), L"rb");
#else
  return std::fopen(path.c_str(), "rb");
#endif
}

Content readAll(const std::string& path, std::size_t limit) {
  // A pipe in a recorded folder must not stop the run.
  std::error_code error;
  const fs::path file = fs::u8path(path);
  const fs::file_status status = fs::status(file, error);
  if (status.type() == fs::file_type::none) {
    return {accessOf(error.value()), ""};
  }
  if (!fs::exists(status)) {
    return {Access::kMissing, ""};
  }
  if (!fs::is_regular_file(status)) {
    return {Access::kFailed, ""};
  }
  const std::unique_ptr<std::FILE, CloseFile> stream(openToRead(file));
  if (stream == nullptr) {
    return {accessOf(errno), ""};
  }
  // The kernel makes its files up as they are read: in one go, if possible.
  std::setvbuf(stream.get(), nullptr, _IONBF, 0);
  // The sizes that it states for them are often wrong (0, or a page), so
  // reading goes on until there is no more.
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
    return {accessOf(errno), ""};
  }
  content.access = Access::kRead;
  return content;
}

}  // namespace

Root::Root(std::string folder) : prefix_(std::move(folder)) {
  while (!prefix_.empty() && prefix_.back() == '/') {
    prefix_.pop_back();
  }
  if (prefix_.empty()) {
    return;
  }
  std::error_code error;
  canonical_ = fs::canonical(fs::u8path(prefix_), error).generic_u8string();
  if (error) {
    canonical_ = prefix_;
  }
}

bool Root::within(const std::string& hostPath) const {
  if (!recorded()) {
    return true;
  }
  std::error_code error;
  const std::string real =
      fs::canonical(fs::u8path(hostPath), error).generic_u8string();
  if (error) {
    return true;  // Opening it will tell what is wrong.
  }
  return real == canonical_ ||
         real.compare(0, canonical_.size() + 1, canonical_ + "/") == 0;
}

bool Root::exists(const std::string& path) const {
  const std::string hostPath = this->path(path);
  std::error_code error;
  return within(hostPath) && fs::exists(fs::u8path(hostPath), error);
}

Content Root::read(const std::string& path, std::size_t limit) const {
  const std::string hostPath = this->path(path);
  if (!within(hostPath)) {
    return {Access::kMissing, ""};
  }
  return readAll(hostPath, limit);
}

std::string Root::line(const std::string& path) const {
  std::string text = read(path, kAttributeLimit).bytes;
  text.resize(std::min(text.size(), text.find('\n')));
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string::npos) {
    return "";
  }
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

std::vector<std::string> Root::list(const std::string& path) const {
  std::vector<std::string> names;
  const std::string hostPath = this->path(path);
  if (!within(hostPath)) {
    return names;
  }
  std::error_code error;
  for (fs::directory_iterator entry(fs::u8path(hostPath), error), end;
       !error && entry != end; entry.increment(error)) {
    names.push_back(entry->path().filename().u8string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string Root::link(const std::string& path) const {
  std::error_code error;
  const fs::path target = fs::read_symlink(fs::u8path(this->path(path)), error);
  return error ? std::string() : target.generic_u8string();
}

}  // namespace local
