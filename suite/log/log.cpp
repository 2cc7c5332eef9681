#include "syshealth/host/log.h"

#include <exception>

#include "suite/log/log_file.h"

namespace Tarvex {

Log::Log(unsigned int level, const char* file, int line)
    : level_(level), file_(file), line_(line) {}

Log::~Log() {
  try {
    logging::writeLine(level_, file_ == nullptr ? "" : file_, line_,
                       stream_.str());
  } catch (const std::exception&) {
    // Losing a line for lack of memory is better than ending the run.
  }
}

std::ostringstream& Log::Stream() { return stream_; }

unsigned int Log::GetMinLogLevel() { return logging::threshold(); }

}  // namespace Tarvex
