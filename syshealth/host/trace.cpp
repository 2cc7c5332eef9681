#include "syshealth/host/trace.h"

namespace {

void trace(const char* prefix, const char* operation, int line) {
  if (Tarvex::Log::GetMinLogLevel() >= kLogTrace) {
    Tarvex::Log(kLogTrace, kLogFile, line).Stream() << prefix << operation;
  }
}

}  // namespace

void traceEntering(const char* operation, int line) {
  trace("Entering  ", operation, line);
}

void traceExiting(const char* operation, int line) {
  trace("Exiting  ", operation, line);
}
