#include <windows.h>
#include <shellapi.h>

#include <string>
#include <vector>

#include "suite/brivel/brivel_main.h"
#include "suite/connection/utf16_windows.h"

// The arguments come from the system, because the C library has them in the
// code page of the machine, in which not every file name can be written.
int main() {
  int count = 0;
  LPWSTR* const wide = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> texts;
  for (int index = 0; wide != nullptr && index < count; ++index) {
    texts.push_back(connection::toUtf8(wide[index]));
  }
  LocalFree(wide);
  std::vector<char*> arguments;
  for (std::string& text : texts) {
    arguments.push_back(text.data());
  }
  arguments.push_back(nullptr);
  return brivelMain(static_cast<int>(texts.size()), arguments.data());
}
