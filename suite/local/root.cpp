#include "suite/local/root.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
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

Content readAll(int file, std::size_t limit) {
  Content content;
  struct stat status = {};
  if (fstat(file, &status) != 0 || !S_ISREG(status.st_mode)) {
    content.access = Access::kFailed;
    return content;
  }
  // The sizes that the kernel states for its files are often wrong (0, or a
  // page), so reading goes on until there is no more.
  char chunk[16384];
  while (true) {
    const ssize_t count = ::read(file, chunk, sizeof chunk);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) {
      content.access = accessOf(errno);
      content.bytes.clear();
      return content;
    }
    if (count == 0) break;
    content.bytes.append(chunk, static_cast<std::size_t>(count));
    if (content.bytes.size() > limit) {
      content.access = Access::kFailed;
      content.bytes.clear();
      return content;
    }
  }
  content.access = Access::kRead;
  return content;
}

}  // namespace

Root::Root(std::string folder) : prefix_(std::move(folder)) {
  while (!prefix_.empty() && prefix_.back() == '/') prefix_.pop_back();
  if (prefix_.empty()) return;
  std::error_code error;
  canonical_ = fs::canonical(prefix_, error).string();
  if (error) canonical_ = prefix_;
}

bool Root::within(const std::string& hostPath) const {
  if (!recorded()) return true;
  std::error_code error;
  const std::string real = fs::canonical(hostPath, error).string();
  if (error) return true;  // Opening it will tell what is wrong.
  return real == canonical_ ||
         real.compare(0, canonical_.size() + 1, canonical_ + "/") == 0;
}

bool Root::exists(const std::string& path) const {
  const std::string hostPath = this->path(path);
  std::error_code error;
  return within(hostPath) && fs::exists(hostPath, error);
}

Content Root::read(const std::string& path, std::size_t limit) const {
  const std::string hostPath = this->path(path);
  if (!within(hostPath)) return {Access::kMissing, ""};
  // O_NONBLOCK: a pipe in a recorded folder must not stop the run.
  const int file = open(hostPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) return {accessOf(errno), ""};
  Content content = readAll(file, limit);
  close(file);
  return content;
}

std::string Root::line(const std::string& path) const {
  std::string text = read(path, kAttributeLimit).bytes;
  text.resize(std::min(text.size(), text.find('\n')));
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

std::vector<std::string> Root::list(const std::string& path) const {
  std::vector<std::string> names;
  const std::string hostPath = this->path(path);
  if (!within(hostPath)) return names;
  std::error_code error;
  for (fs::directory_iterator entry(hostPath, error), end;
       !error && entry != end; entry.increment(error)) {
    names.push_back(entry->path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string Root::link(const std::string& path) const {
  std::error_code error;
  const fs::path target = fs::read_symlink(this->path(path), error);
  return error ? std::string() : target.string();
}

}  // namespace local
