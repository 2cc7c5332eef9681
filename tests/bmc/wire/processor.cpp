#include "tests/bmc/wire/processor.h"

#include <algorithm>

namespace bmc {

Processor::TimePoint Processor::doHandshake(TimePoint now, bool resumed) {
  return work(now, resumed ? effort_.resumedHandshake : effort_.fullHandshake);
}

Processor::TimePoint Processor::doRequest(TimePoint now) {
  return work(now, effort_.request);
}

// Work that takes no time does not wait for the processor.
Processor::TimePoint Processor::work(TimePoint now,
                                     std::chrono::milliseconds time) {
  if (time.count() == 0) {
    return now;
  }
  freeAt_ = std::max(freeAt_, now) + time;
  return freeAt_;
}

}  // namespace bmc
