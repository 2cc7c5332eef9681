#pragma once

/// Marks what crosses the border between the module and the suite's shared
/// library. The library defines BRIVEL_SUITE_BUILDING while it is compiled.
#if defined(_WIN32)
#if defined(BRIVEL_SUITE_BUILDING)
#define BRIVEL_SUITE_API __declspec(dllexport)
#else
#define BRIVEL_SUITE_API __declspec(dllimport)
#endif
#else
#define BRIVEL_SUITE_API __attribute__((visibility("default")))
#endif

/// Marks the module's entry points, the only names that it exports.
#if defined(_WIN32)
#define SYSHEALTH_EXPORT __declspec(dllexport)
#else
#define SYSHEALTH_EXPORT __attribute__((visibility("default")))
#endif
