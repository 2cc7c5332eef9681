#include "export/run.h"

#include <iostream>
#include <memory>
#include <string>

#include "export/formats.h"
#include "export/options.h"
#include "export/outcome.h"
#include "export/output_file.h"
#include "export/schema.h"
#include "suite/report/reader/reports.h"

namespace exporting {
namespace {

BrivelResult failure(int code, const std::string& message) {
  BrivelResult result;
  result.code = code;
  result.message = message;
  return result;
}

Outcome writeReports(const Options& options, Format& format,
                     std::ostream& out) {
  report::Reports reports(options.wants);
  report::ServerReport server;
  Outcome outcome;
  // Without a reader there is nobody to read on for.
  while (out && reports.next(server)) {
    format.add(server, out);
    outcome.add(server);
  }
  format.end(out);
  return outcome;
}

}  // namespace

BrivelResult run() {
  std::string error;
  const auto options = readOptions(error);
  const auto format = options ? makeFormat(*options, error) : nullptr;
  if (!format) {
    return failure(kInvalidParameter, error);
  }
  if (options->schema) {
    std::cout << kJsonSchema << std::flush;
    return {};
  }
  if (options->output.empty()) {
    return writeReports(*options, *format, std::cout).result();
  }
  OutputFile file;
  if (!file.open(options->output, error)) {
    return failure(kWriteFileFailed, "--output: " + error);
  }
  const Outcome outcome = writeReports(*options, *format, file.stream());
  return file.commit(error) ? outcome.result()
                            : failure(kWriteFileFailed, "--output: " + error);
}

}  // namespace exporting
