#include "syshealth/host/console_line.h"

#include <iostream>

#include "syshealth/host/trace.h"

ConsoleLine::ConsoleLine(unsigned int level, const char* file, int line)
    : log_(level, file, line), level_(level) {}

ConsoleLine::~ConsoleLine() {
  const std::string text = stream_.str();
  log_.Stream() << text;
  std::ostream& console = level_ < 2 ? std::cerr : std::cout;
  console << text << std::endl;
}

std::ostringstream& ConsoleLine::Stream() { return stream_; }

void printReport(const std::string& text, int line) {
  ConsoleLine(kLogInformation, kLogFile, line).Stream() << text;
}

void printError(const std::string& text, int line) {
  ConsoleLine(kLogError, kLogFile, line).Stream() << text;
}
