#include "bench/silent_console.h"

#include <iostream>

namespace bench {

SilentConsole::SilentConsole() : console_(std::cout.rdbuf(&sink_)) {}

SilentConsole::~SilentConsole() { std::cout.rdbuf(console_); }

SilentConsole::Sink::int_type SilentConsole::Sink::overflow(int_type letter) {
  return traits_type::not_eof(letter);
}

std::streamsize SilentConsole::Sink::xsputn(const char*,
                                            std::streamsize count) {
  return count;
}

}  // namespace bench
