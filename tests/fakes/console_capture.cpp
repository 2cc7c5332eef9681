#include "tests/fakes/console_capture.h"

namespace fakes {

StreamCapture::StreamCapture(std::ostream& stream, Kind kind)
    : stream_(stream), kind_(kind), replaced_(stream.rdbuf(this)) {}

StreamCapture::~StreamCapture() { stream_.rdbuf(replaced_); }

StreamCapture::int_type StreamCapture::overflow(int_type character) {
  if (!traits_type::eq_int_type(character, traits_type::eof())) {
    bytes_.push_back(traits_type::to_char_type(character));
  }
  return traits_type::not_eof(character);
}

std::streamsize StreamCapture::xsputn(const char* text, std::streamsize size) {
  bytes_.append(text, static_cast<std::size_t>(size));
  return size;
}

// Standard error flushes after every insertion; only a flush that follows an
// end of line ends a line.
int StreamCapture::sync() {
  if (bytes_.size() > notedBytes_ && bytes_.back() == '\n') {
    note(kind_, bytes_.substr(notedBytes_, bytes_.size() - notedBytes_ - 1));
    notedBytes_ = bytes_.size();
  }
  return 0;
}

}  // namespace fakes
