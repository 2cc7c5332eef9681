#include "check/baseline_file.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace check {
namespace {

namespace fs = std::filesystem;

// A thousand large servers take some tens of MiB.
constexpr std::uintmax_t kMostBytes = 256U << 20U;

// Why a file cannot be read; empty if it was, into `text`.
std::string read(const std::string& path, std::string& text) {
  const fs::path file = fs::u8path(path);
  std::error_code failed;
  const fs::file_status status = fs::status(file, failed);
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    return "is no regular file";
  }
  if (fs::exists(status) && fs::file_size(file, failed) > kMostBytes) {
    return "is larger than " + std::to_string(kMostBytes >> 20U) + " MiB";
  }
  errno = 0;
  std::ifstream stream(file, std::ios::binary);
  text.assign(std::istreambuf_iterator<char>(stream), {});
  if (!stream.is_open() || stream.bad()) {
    return std::string("cannot be read: ") + std::strerror(errno);
  }
  return "";
}

}  // namespace

base::Result<Baseline> loadBaseline(const std::string& path) {
  std::string text;
  const std::string problem = read(path, text);
  if (!problem.empty()) {
    base::Failure failure;
    failure.kind = base::FailureKind::kFileUnreadable;
    failure.cause = "--baseline: '" + path + "' " + problem;
    return failure;
  }
  auto baseline = Baseline::parse(text);
  if (!baseline) {
    base::Failure failure = baseline.error();
    failure.cause = "--baseline: '" + path +
                    "' is no baseline: " + failure.cause +
                    "; write it anew with --save-baseline";
    return failure;
  }
  return baseline;
}

}  // namespace check
