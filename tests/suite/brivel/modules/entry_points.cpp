// An application for tests that has the entry points it is told to have, and
// registers under the name it is told, if any.
#include <cstdint>

#include "syshealth/host/arg_parser.h"
#include "syshealth/result/brivel_result.h"

#define ENTRY_EXPORT extern "C" __attribute__((visibility("default")))

#if HAS_INIT
ENTRY_EXPORT void Init() {
#if defined(REGISTERED_NAME)
  if (ArgParser* const parser = ArgParser::GetInstance()) {
    parser->RegisterApp(REGISTERED_NAME, 78);
  }
#endif
}
#endif

#if HAS_PARAM_REGISTER
ENTRY_EXPORT std::int32_t ParamRegister(std::int32_t /*command*/) { return 0; }
#endif

#if HAS_APP_MAIN
#if defined(__clang__)
#pragma clang diagnostic push
// Host and module are built by one compiler; the class is part of the border.
#pragma clang diagnostic ignored "-Wreturn-type-c-linkage"
#endif
ENTRY_EXPORT BrivelResult AppMain(std::int32_t /*command*/) { return {}; }
#if defined(__clang__)
#pragma clang diagnostic pop
#endif
#endif

#if NEEDS_WHAT_IS_NOWHERE
void nowhere();
ENTRY_EXPORT void callNowhere() { nowhere(); }
#endif
