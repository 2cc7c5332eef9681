#include "syshealth/host/log.h"

#include "tests/fakes/journal.h"
#include "tests/fakes/script.h"

namespace Tarvex {

Log::Log(unsigned int level, const char* file, int line)
    : level_(level), file_(file), line_(line) {}

// Keeps every line whatever the threshold: what the module hands over is what
// the tests are about.
Log::~Log() {
  fakes::logRecords().push_back({level_, file_, line_, stream_.str()});
  fakes::note(fakes::Kind::kLog, std::to_string(level_) + ": " + stream_.str());
}

std::ostringstream& Log::Stream() { return stream_; }

unsigned int Log::GetMinLogLevel() {
  ++fakes::thresholdReads();
  return fakes::script().logThreshold;
}

}  // namespace Tarvex
