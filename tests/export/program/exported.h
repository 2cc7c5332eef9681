#pragma once

#include <string>
#include <vector>

namespace exporting {

/// How a run of the built program ended.
struct RunEnd {
  int status = -1;
  std::string output;
  std::string errors;
};

/// Runs the built program, with a home of its own and the password of the test
/// controller.
RunEnd runBrivel(const std::vector<std::string>& arguments);

/// Runs another program on a text. Status 127: there is none.
RunEnd runOn(const std::string& program,
             const std::vector<std::string>& arguments,
             const std::string& input);

/// The lines of a text.
std::vector<std::string> linesOf(const std::string& text);

/// The recorded servers of the source tree, each as the arguments that name
/// it.
std::vector<std::vector<std::string>> recordedServers();

/// What the published schema says against some lines, by the validator of
/// python3-jsonschema; empty if nothing. The calling test is to be skipped
/// where `hasValidator` is false.
std::string objectionOfSchema(const std::string& lines);
bool hasValidator();

}  // namespace exporting
