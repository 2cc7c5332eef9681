#pragma once

#include "tests/bmc/wire/message.h"

namespace bmc {

/// Compresses another responder's answers for clients that accept gzip.
/// Leaves those alone that declare a coding or a length of their own.
class Compressing : public Responder {
 public:
  /// `inner` must outlive this.
  explicit Compressing(Responder& inner) : inner_(inner) {}

  Reply answer(const Request& request) override;

 private:
  Responder& inner_;
};

}  // namespace bmc
