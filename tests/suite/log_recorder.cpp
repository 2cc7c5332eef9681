#include "tests/suite/log_recorder.h"

#include "syshealth/host/log.h"

namespace {

std::vector<LogLine>& lines() {
  static std::vector<LogLine> kept;
  return kept;
}

}  // namespace

const std::vector<LogLine>& loggedLines() { return lines(); }

void clearLog() { lines().clear(); }

namespace Tarvex {

Log::Log(unsigned int level, const char* file, int line)
    : level_(level), file_(file), line_(line) {}

Log::~Log() {
  lines().push_back({std::string(file_) + ':' + std::to_string(line_), level_,
                     stream_.str()});
}

std::ostringstream& Log::Stream() { return stream_; }

unsigned int Log::GetMinLogLevel() { return 4; }

}  // namespace Tarvex
