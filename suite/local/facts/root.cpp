#include "suite/local/facts/root.h"

#include <algorithm>
#include <utility>

#include "suite/base/ascii.h"

namespace local {
namespace {

// Attribute files hold a page at most.
constexpr std::size_t kAttributeLimit = 4096;

}  // namespace

Root::Root(std::string folder) : prefix_(std::move(folder)) {
  while (!prefix_.empty() && prefix_.back() == '/') {
    prefix_.pop_back();
  }
  if (prefix_.empty()) {
    return;
  }
  canonical_ = realPath(prefix_);
  if (canonical_.empty()) {
    canonical_ = prefix_;
  }
}

bool Root::within(const std::string& hostPath) const {
  if (!recorded()) {
    return true;
  }
  const std::string real = realPath(hostPath);
  if (real.empty()) {
    return true;  // Opening it will tell what is wrong.
  }
  return real.compare(0, canonical_.size(), canonical_) == 0 &&
         (real.size() == canonical_.size() || real[canonical_.size()] == '/');
}

bool Root::exists(const std::string& path) const {
  const std::string hostPath = this->path(path);
  return within(hostPath) && local::exists(hostPath);
}

Content Root::read(const std::string& path, std::size_t limit) const {
  const std::string hostPath = this->path(path);
  if (!within(hostPath)) {
    return {Access::kMissing, ""};
  }
  return readFile(hostPath, limit);
}

std::string Root::line(const std::string& path) const {
  std::string text = read(path, kAttributeLimit).bytes;
  text.resize(std::min(text.size(), text.find('\n')));
  return std::string(base::trimmed(text));
}

std::vector<std::string> Root::list(const std::string& path) const {
  const std::string hostPath = this->path(path);
  if (!within(hostPath)) {
    return {};
  }
  std::vector<std::string> names = namesIn(hostPath);
  std::sort(names.begin(), names.end());
  return names;
}

std::string Root::link(const std::string& path) const {
  return linkTarget(this->path(path));
}

}  // namespace local
