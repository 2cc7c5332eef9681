#include "syshealth/host/app_base.h"

#include <string>

#include "tests/fakes/journal.h"

AppBase::AppBase() { fakes::note(fakes::Kind::kCall, "AppBase()"); }

AppBase::~AppBase() {
  fakes::note(fakes::Kind::kCall, "~AppBase(id " + std::to_string(appId) +
                                      ", command " + std::to_string(command) +
                                      ")");
}
