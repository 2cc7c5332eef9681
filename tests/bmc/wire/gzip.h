#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "tests/bmc/wire/body.h"

namespace bmc {

/// Another body in gzip coding (RFC 1952), compressed while it is sent, so
/// that a few kilobytes of it may stand for any length.
class GzipBody : public Body {
 public:
  explicit GzipBody(std::unique_ptr<Body> plain);
  ~GzipBody() override;

  std::optional<std::uint64_t> size() const override;
  std::string_view next(std::size_t limit) override;

 private:
  struct Deflater;

  std::unique_ptr<Body> plain_;
  std::unique_ptr<Deflater> deflater_;
  std::string packed_;
};

/// The text in gzip coding.
std::string gzip(std::string text);

}  // namespace bmc
