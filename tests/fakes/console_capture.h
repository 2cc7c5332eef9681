#pragma once

#include <ostream>
#include <streambuf>
#include <string>

#include "tests/fakes/journal.h"

namespace fakes {

/// Takes the place of one standard stream's buffer while it lives: keeps what
/// is written byte for byte, and notes each line in the journal when it is
/// flushed, so that a line without its flush is missed.
class StreamCapture : public std::streambuf {
 public:
  StreamCapture(std::ostream& stream, Kind kind);
  ~StreamCapture() override;

  StreamCapture(const StreamCapture&) = delete;
  StreamCapture& operator=(const StreamCapture&) = delete;

  /// Everything written so far.
  const std::string& bytes() const { return bytes_; }

 protected:
  int_type overflow(int_type character) override;
  std::streamsize xsputn(const char* text, std::streamsize size) override;
  int sync() override;

 private:
  std::ostream& stream_;
  Kind kind_;
  std::streambuf* replaced_;
  std::string bytes_;
  std::size_t notedBytes_ = 0;
};

}  // namespace fakes
