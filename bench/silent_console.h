#pragma once

#include <streambuf>

namespace bench {

/// Swallows what is written to standard output while it lives, so that a
/// terminal does not drown what is measured.
class SilentConsole {
 public:
  SilentConsole();
  ~SilentConsole();

  SilentConsole(const SilentConsole&) = delete;
  SilentConsole& operator=(const SilentConsole&) = delete;

 private:
  class Sink : public std::streambuf {
   protected:
    int_type overflow(int_type letter) override;
    std::streamsize xsputn(const char* text, std::streamsize count) override;
  };

  Sink sink_;
  std::streambuf* console_;
};

}  // namespace bench
