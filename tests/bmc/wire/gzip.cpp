#include "tests/bmc/wire/gzip.h"

#define ZLIB_CONST  // Input is only read.
#include <zlib.h>

#include <cstddef>
#include <new>
#include <utility>

namespace bmc {
namespace {

constexpr int kGzipWindowBits = 15 + 16;  // 16 asks for the gzip wrapper.
constexpr int kMemoryLevel = 8;
constexpr std::size_t kBlock = 1024 * 1024;

}  // namespace

struct GzipBody::Deflater {
  Deflater() {
    // It fails only for want of memory, the parameters being right.
    if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED,
                     kGzipWindowBits, kMemoryLevel,
                     Z_DEFAULT_STRATEGY) != Z_OK) {
      throw std::bad_alloc();
    }
  }
  ~Deflater() {
    static_cast<void>(deflateEnd(&stream));  // Only frees.
  }
  Deflater(const Deflater&) = delete;
  Deflater& operator=(const Deflater&) = delete;

  z_stream stream{};
  bool inputEnded = false;
  bool ended = false;
};

GzipBody::GzipBody(std::unique_ptr<Body> plain)
    : plain_(std::move(plain)), deflater_(std::make_unique<Deflater>()) {}

GzipBody::~GzipBody() = default;

std::optional<std::uint64_t> GzipBody::size() const { return std::nullopt; }

std::string_view GzipBody::next(std::size_t limit) {
  z_stream& stream = deflater_->stream;
  packed_.resize(limit);
  stream.next_out = reinterpret_cast<Bytef*>(packed_.data());
  stream.avail_out = static_cast<uInt>(limit);
  while (!deflater_->ended && stream.avail_out == limit) {
    if (stream.avail_in == 0 && !deflater_->inputEnded) {
      const std::string_view bytes = plain_->next(kBlock);
      stream.next_in = reinterpret_cast<const Bytef*>(bytes.data());
      stream.avail_in = static_cast<uInt>(bytes.size());
      deflater_->inputEnded = bytes.empty();
    }
    const int flush = deflater_->inputEnded ? Z_FINISH : Z_NO_FLUSH;
    deflater_->ended = deflate(&stream, flush) == Z_STREAM_END;
  }
  packed_.resize(limit - stream.avail_out);
  return packed_;
}

std::string gzip(std::string text) {
  GzipBody body(std::make_unique<TextBody>(std::move(text)));
  std::string packed;
  for (std::string_view bytes; !(bytes = body.next(kBlock)).empty();) {
    packed += bytes;
  }
  return packed;
}

}  // namespace bmc
