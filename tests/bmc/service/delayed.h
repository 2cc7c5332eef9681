#pragma once

#include <chrono>

#include "tests/bmc/wire/message.h"

namespace bmc {

/// Gives every answer of another responder the same delay.
class Delayed : public Responder {
 public:
  /// `inner` must outlive this.
  Delayed(Responder& inner, std::chrono::milliseconds delay)
      : inner_(inner), delay_(delay) {}

  Reply answer(const Request& request) override {
    Reply reply = inner_.answer(request);
    reply.delivery.delay += delay_;
    return reply;
  }

 private:
  Responder& inner_;
  std::chrono::milliseconds delay_;
};

}  // namespace bmc
