#pragma once

#include "syshealth/host/export.h"

/// The program: everything from the command line to the exit status.
BRIVEL_SUITE_API int brivelMain(int argc, char** argv);
