#pragma once

#include <string>

namespace connection {

/// Keeps a terminal from showing what is typed, as long as it lives; one at a
/// time. A signal that ends or stops the process meanwhile (SIGQUIT, SIGALRM,
/// SIGTSTP ...) first puts the terminal back and drops what was typed. A
/// process that was stopped and goes on keeps the terminal silent again, and
/// the question is shown once more.
class SilentTerminal {
 public:
  /// `output` receives the question.
  SilentTerminal(int input, int output, const std::string& question);
  ~SilentTerminal();

  SilentTerminal(const SilentTerminal&) = delete;
  SilentTerminal& operator=(const SilentTerminal&) = delete;

  bool silenced() const { return silenced_; }

 private:
  bool silenced_ = false;
};

}  // namespace connection
