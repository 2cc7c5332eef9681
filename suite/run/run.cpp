#include "suite/run/run.h"

namespace run {
namespace {

Run* currentRun = nullptr;

}  // namespace

Run::Run() { currentRun = this; }

Run::~Run() {
  if (currentRun == this) {
    currentRun = nullptr;
  }
}

Run* Run::current() { return currentRun; }

}  // namespace run
