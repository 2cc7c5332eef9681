#include "tests/fakes/script.h"

#include <stdexcept>

#include "tests/fakes/journal.h"

namespace fakes {

Script& script() {
  static Script inForce;
  return inForce;
}

void reset() {
  script() = Script();
  clearJournal();
}

void enter(const std::string& call) {
  note(Kind::kCall, call);
  if (call == script().throwingCall) {
    throw std::runtime_error("scripted failure of " + call);
  }
}

}  // namespace fakes
