#include "export/output_file.h"

#include <cerrno>
#include <cstring>
#include <system_error>

#include "export/new_file.h"

namespace exporting {
namespace {

namespace fs = std::filesystem;

std::string problem(const fs::path& path, const std::string& what) {
  return "'" + path.u8string() + "' " + what;
}

// The file that a path leads to, behind symbolic links.
fs::path behindLinks(const fs::path& path) {
  std::error_code failed;
  fs::path target = fs::canonical(path, failed);
  return failed ? path : target;
}

}  // namespace

void FileBuffer::note(bool succeeded) {
  if (!succeeded && error_ == 0) {
    error_ = errno == 0 ? EIO : errno;
  }
}

FileBuffer::int_type FileBuffer::overflow(int_type character) {
  errno = 0;
  const int_type result = std::filebuf::overflow(character);
  note(result != traits_type::eof());
  return result;
}

std::streamsize FileBuffer::xsputn(const char* text, std::streamsize size) {
  errno = 0;
  const std::streamsize written = std::filebuf::xsputn(text, size);
  note(written == size);
  return written;
}

int FileBuffer::sync() {
  errno = 0;
  const int result = std::filebuf::sync();
  note(result == 0);
  return result;
}

OutputFile::~OutputFile() {
  if (!beside_.empty()) {
    buffer_.close();
    std::error_code ignored;
    fs::remove(beside_, ignored);
  }
}

bool OutputFile::open(const std::string& path, std::string& error) {
  path_ = behindLinks(fs::u8path(path));
  std::error_code failed;
  const fs::file_status status = fs::status(path_, failed);
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    error = problem(path_, "is no regular file");
    return false;
  }
  constexpr int kTries = 100;
  for (int i = 0; i < kTries && beside_.empty(); ++i) {
    fs::path beside = path_;
    beside += ".new-" + uniqueSuffix(i);
    failed = makeNewFile(beside);
    if (!failed) {
      beside_ = std::move(beside);
    } else if (failed != std::errc::file_exists) {
      break;
    }
  }
  if (!beside_.empty()) {
    errno = 0;
    if (buffer_.open(beside_, std::ios::binary | std::ios::out) != nullptr) {
      return true;
    }
    failed = std::error_code(errno, std::generic_category());
  }
  error = problem(path_, "cannot be written: " + failed.message());
  return false;
}

bool OutputFile::commit(std::string& error) {
  stream_.flush();
  std::error_code failed(buffer_.error(), std::generic_category());
  if (buffer_.close() == nullptr && !failed) {
    failed = std::make_error_code(std::errc::io_error);
  }
  if (!failed) {
    failed = bringToDisk(beside_);
  }
  if (!failed) {
    std::error_code none;
    const fs::file_status old = fs::status(path_, none);
    if (fs::exists(old)) {
      fs::permissions(beside_, old.permissions(), none);
    }
    fs::rename(beside_, path_, failed);
  }
  if (failed) {
    error = problem(path_, "cannot be written: " + failed.message() +
                               "; it stays as it was");
    return false;
  }
  beside_.clear();
  return true;
}

}  // namespace exporting
