#include "bench/controller/program.h"

#include "tests/support/child_process.h"

namespace bench {

Run runProgram(const std::vector<std::string>& words, const std::string& home) {
  support::ChildOptions options;
  options.program = words.front();
  options.arguments.assign(words.begin() + 1, words.end());
  options.environment = {"LC_ALL=C", "PATH=/usr/sbin:/usr/bin:/sbin:/bin",
                         "HOME=" + home};
  options.outputFile = "/dev/null";
  support::ChildProcess child(options);
  const support::ChildEnd end = child.wait();
  Run run;
  run.status = end.status;
  run.milliseconds = end.milliseconds;
  run.cpuMilliseconds = end.cpuMilliseconds;
  run.mebibytes = static_cast<double>(end.kibibytes) / 1024.0;
  run.errors = child.errors();
  return run;
}

}  // namespace bench
