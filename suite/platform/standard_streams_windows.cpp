#include "suite/platform/standard_streams.h"

#include <windows.h>
#include <io.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>

namespace platform {
namespace {

UINT codePageBefore = 0;

void restoreCodePage() { SetConsoleOutputCP(codePageBefore); }

// A stream that the program was started without goes to the null device.
void replaceMissing(std::FILE* stream, const char* mode) {
  if (_fileno(stream) < 0) {
    static_cast<void>(std::freopen("NUL", mode, stream));
  }
}

}  // namespace

void prepareStandardStreams() {
  replaceMissing(stdin, "r");
  // Read-only: what is written to a missing output is still an error.
  replaceMissing(stdout, "r");
  replaceMissing(stderr, "r");
  // A module that lacks a library is an error to be told, not a dialogue.
  SetErrorMode(GetErrorMode() | SEM_FAILCRITICALERRORS);
  // All texts are UTF-8. The code page is the console's, not the program's: it
  // would stay behind.
  codePageBefore = GetConsoleOutputCP();
  if (codePageBefore != 0 && codePageBefore != CP_UTF8 &&
      SetConsoleOutputCP(CP_UTF8) != 0) {
    std::atexit(restoreCodePage);
  }
}

bool outputIsWhole() { return static_cast<bool>(std::cout.flush()); }

bool outputIsPipe() {
  return GetFileType(GetStdHandle(STD_OUTPUT_HANDLE)) == FILE_TYPE_PIPE;
}

bool outputIsAbandoned() {
  const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
  DWORD written = 0;
  return GetFileType(output) == FILE_TYPE_PIPE &&
         WriteFile(output, "", 0, &written, nullptr) == 0;
}

}  // namespace platform
