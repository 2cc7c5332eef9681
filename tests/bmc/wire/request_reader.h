#pragma once

#include <memory>
#include <string>

#include "tests/bmc/wire/message.h"

namespace bmc {

/// Takes requests out of the bytes of one connection.
class RequestReader {
 public:
  enum class State { kIncomplete, kComplete, kMalformed };

  RequestReader();
  ~RequestReader();

  RequestReader(const RequestReader&) = delete;
  RequestReader& operator=(const RequestReader&) = delete;

  /// Takes bytes off the front of the buffer until a request is complete or
  /// more bytes are needed.
  State feed(std::string& buffer);

  /// The complete request; the next feed starts another. Connection and
  /// ordinal are the caller's to fill in.
  Request take();

 private:
  struct Parser;
  std::unique_ptr<Parser> parser_;
};

}  // namespace bmc
