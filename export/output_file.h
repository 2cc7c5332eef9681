#pragma once

#include <filesystem>
#include <fstream>
#include <ostream>
#include <string>

namespace exporting {

/// A file's buffer that remembers why writing failed first.
class FileBuffer : public std::filebuf {
 public:
  /// The system's error number; 0: none.
  int error() const { return error_; }

 protected:
  int_type overflow(int_type character) override;
  std::streamsize xsputn(const char* text, std::streamsize size) override;
  int sync() override;

 private:
  void note(bool succeeded);

  int error_ = 0;
};

/// A file that is written beside the one that it is to replace, and takes its
/// place when it is whole: a reader never sees half of it, and where writing
/// fails the old one stays.
class OutputFile {
 public:
  OutputFile() = default;
  ~OutputFile();  ///< Removes what has not taken the place.

  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  /// Begins to write. Returns false and sets `error` if there is something at
  /// the path that is no regular file, or none can be made beside it.
  bool open(const std::string& path, std::string& error);

  std::ostream& stream() { return stream_; }

  /// Brings all that was written to the disk and lets it take the place of the
  /// old file, whose permissions it gets. Returns false and sets `error` if
  /// that fails; the old file stays then.
  bool commit(std::string& error);

 private:
  std::filesystem::path path_;
  std::filesystem::path beside_;  ///< Empty: there is none.
  FileBuffer buffer_;
  std::ostream stream_{&buffer_};
};

}  // namespace exporting
