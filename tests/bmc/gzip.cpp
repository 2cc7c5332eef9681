#include "tests/bmc/gzip.h"

#define ZLIB_CONST  // Input is only read.
#include <zlib.h>

namespace bmc {

std::string gzip(std::string_view text) {
  constexpr int kGzipWindowBits = 15 + 16;  // 16 asks for the gzip wrapper.
  constexpr int kMemoryLevel = 8;
  z_stream stream{};
  if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, kGzipWindowBits,
                   kMemoryLevel, Z_DEFAULT_STRATEGY) != Z_OK) {
    return {};
  }
  std::string output(deflateBound(&stream, text.size()), '\0');
  stream.next_in = reinterpret_cast<const Bytef*>(text.data());
  stream.avail_in = static_cast<uInt>(text.size());
  stream.next_out = reinterpret_cast<Bytef*>(output.data());
  stream.avail_out = static_cast<uInt>(output.size());
  const int outcome = deflate(&stream, Z_FINISH);
  output.resize(outcome == Z_STREAM_END ? stream.total_out : 0);
  static_cast<void>(deflateEnd(&stream));  // Only frees; nothing to do if not.
  return output;
}

}  // namespace bmc
