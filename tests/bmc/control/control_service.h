#pragma once

#include "tests/bmc/record/counters.h"
#include "tests/bmc/record/journal.h"
#include "tests/bmc/wire/message.h"

namespace bmc {

/// What a test may ask on the control port, without any login:
/// GET /counters (one JSON object) and GET /log (one JSON object a line).
class ControlService : public Responder {
 public:
  /// Both must outlive the service.
  ControlService(const Counters& counters, const Journal& journal);

  Reply answer(const Request& request) override;

 private:
  const Counters& counters_;
  const Journal& journal_;
};

}  // namespace bmc
