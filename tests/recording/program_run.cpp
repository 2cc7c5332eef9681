#include "tests/recording/program_run.h"

#include <utility>

#include "tests/support/child_process.h"
#include "tests/support/temp_folder.h"

namespace recording {

Ended run(Arguments arguments, const Arguments& further) {
  const support::TempFolder home;
  support::ChildOptions options;
  options.program = BRIVEL_PROGRAM;
  options.arguments = std::move(arguments);
  options.arguments.insert(options.arguments.end(), further.begin(),
                           further.end());
  options.environment = support::sanitizerOptions();
  options.environment.push_back("HOME=" + home.path().string());
  options.environment.push_back(std::string("BRIVEL_PASSWORD=") + kPassword);
  options.directory = BRIVEL_SOURCE_ROOT;
  support::ChildProcess child(options);
  Ended ended;
  ended.status = child.wait().status;
  ended.output = child.output();
  ended.errors = child.errors();
  ended.errors = ended.errors.substr(0, ended.errors.find(" Log: "));
  return ended;
}

}  // namespace recording
