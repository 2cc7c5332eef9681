#pragma once

#include <cstdint>

#include "syshealth/host/export.h"
#include "syshealth/result/brivel_result.h"

// The module's entry points, called by the host in this order, each to its
// end on the caller's thread. The module keeps nothing between the calls and
// does not check their order.

/// Registers the application's name and number.
extern "C" SYSHEALTH_EXPORT void Init();

/// Registers the option specification of a command. A result code.
extern "C" SYSHEALTH_EXPORT std::int32_t ParamRegister(std::int32_t command);

#if defined(__clang__)
// The result is a C++ class by contract: host and module come from one
// compiler, and C linkage is there for the plain name only.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wreturn-type-c-linkage"
#endif
/// Runs a command. Its result code, all 32 bits, and an empty message.
extern "C" SYSHEALTH_EXPORT BrivelResult AppMain(std::int32_t command);
#if defined(__clang__)
#pragma clang diagnostic pop
#endif
