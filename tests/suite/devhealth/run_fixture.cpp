#include "tests/suite/devhealth/run_fixture.h"

#include "tests/suite/log_recorder.h"

RunFixture::RunFixture() {
  clearLog();
  serve("rack-server");
}

void RunFixture::start() {
  run->pool().add(
      std::make_unique<redfish::Service>(options, makeScriptTransport(script)));
}

void RunFixture::serve(const std::string& sample) {
  script->tree = std::string(SAMPLES_DIR) + "/" + sample;
}
