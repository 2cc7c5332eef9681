#include "tests/export/program/exported.h"

#include <sstream>

#include "tests/support/child_process.h"
#include "tests/support/temp_folder.h"

namespace exporting {
namespace {

RunEnd runToEnd(const support::ChildOptions& options) {
  support::ChildProcess child(options);
  RunEnd end;
  end.status = child.wait().status;
  end.output = child.output();
  end.errors = child.errors();
  return end;
}

// Reads lines, validates each against the schema, and prints the first
// objections.
constexpr char kValidate[] = R"(
import json, sys
from jsonschema import Draft202012Validator, FormatChecker
schema = json.load(open(sys.argv[1]))
Draft202012Validator.check_schema(schema)
validator = Draft202012Validator(schema, format_checker=FormatChecker())
count = 0
for line in sys.stdin:
    count += 1
    for error in validator.iter_errors(json.loads(line)):
        print(error.json_path, error.message)
if count == 0:
    print('there is no line')
)";

}  // namespace

RunEnd runBrivel(const std::vector<std::string>& arguments) {
  const support::TempFolder home;
  support::ChildOptions options;
  options.program = BRIVEL_PROGRAM;
  options.arguments = arguments;
  options.environment = {"HOME=" + home.path().string(), "LC_ALL=C",
                         "BRIVEL_PASSWORD=Nothing-2-Hide"};
  for (std::string& setting : support::sanitizerOptions()) {
    options.environment.push_back(std::move(setting));
  }
  return runToEnd(options);
}

RunEnd runOn(const std::string& program,
             const std::vector<std::string>& arguments,
             const std::string& input) {
  support::ChildOptions options;
  options.program = program;
  options.arguments = arguments;
  options.environment = support::ownEnvironment();
  options.input = input;
  return runToEnd(options);
}

std::vector<std::string> linesOf(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

std::vector<std::vector<std::string>> recordedServers() {
  std::vector<std::vector<std::string>> servers;
  for (const char* name :
       {"accelerator-server", "edge", "linkless-blades", "old-schema",
        "rack-server", "tagged-server", "two-node"}) {
    servers.push_back({"--bmc", std::string("file:" SAMPLES "/") + name});
  }
  for (const char* name : {"local-server", "local-odd"}) {
    servers.push_back({"--local-root", std::string(SAMPLES "/") + name});
  }
  return servers;
}

bool hasValidator() {
  return runOn("python3", {"-c", "import jsonschema"}, "").status == 0;
}

std::string objectionOfSchema(const std::string& lines) {
  const RunEnd end = runOn("python3", {"-c", kValidate, SCHEMA_FILE}, lines);
  return end.output + end.errors;
}

}  // namespace exporting
