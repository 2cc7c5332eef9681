#include "tests/bmc/options.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

namespace bmc {
namespace {

void addEffort(CLI::App& app, Options& options) {
  const auto add = [&app](const char* name, std::chrono::milliseconds& time,
                          const char* help) {
    app.add_option_function<unsigned>(
        name,
        [&time](unsigned value) { time = std::chrono::milliseconds(value); },
        help);
  };
  add("--full-handshake-ms", options.effort.fullHandshake,
      "What a full TLS handshake takes of the one processor, which does one "
      "thing after another");
  add("--resumed-handshake-ms", options.effort.resumedHandshake,
      "The same of a handshake that takes up an earlier session");
  add("--request-ms", options.effort.request, "The same of a request");
  app.add_option("--round-trip-ms", options.roundTripMs,
                 "The network's: taken by a connection, by its handshake, and "
                 "by each answer");
}

}  // namespace

bool parseOptions(int argc, char** argv, Options& options, int& exitStatus) {
  CLI::App app(
      "A management controller to test against: serves a recorded Redfish "
      "tree on loopback, over HTTP and HTTPS.");
  app.add_option("--tree", options.tree, "Folder of the recorded server")
      ->required()
      ->check(CLI::ExistingDirectory);
  app.add_option("--dir", options.directory,
                 "Folder for ready.json, certificate.pem, log.jsonl and "
                 "counters.json")
      ->required();
  app.add_option(
      "--address", options.address,
      "Loopback address to listen on; 0.0.0.0 for all of 127.0.0.0/8");
  app.add_option("--http-port", options.httpPort, "0: any free port");
  app.add_option("--https-port", options.httpsPort, "0: any free port");
  app.add_option("--control-port", options.controlPort, "0: any free port");
  app.add_option("--ipmi-port", options.ipmiPort,
                 "UDP; 0: any free port; opened if the fault file asks");
  app.add_option("--user", options.user, "Name of the one account");
  app.add_option("--password-file", options.passwordFile,
                 "File whose first line is its password");
  app.add_flag("--open", options.open, "Ask nobody to log in");
  app.add_option("--max-sessions", options.maxSessions,
                 "Size of the session table");
  app.add_option("--delay-ms", options.delayMs,
                 "Time from a request's arrival to its answer");
  addEffort(app, options);
  app.add_option("--expand", options.expand,
                 "Support $expand, this many levels deep")
      ->check(CLI::Range(0, 6));
  app.add_option("--page-size", options.pageSize,
                 "Serve collections in pages of this many members");
  app.add_flag("--gzip", options.gzip, "Compress for clients that accept it");
  auto* certificate =
      app.add_option("--certificate", options.certificateFile,
                     "PEM file, chain included (default: one is made)");
  auto* key = app.add_option("--key", options.keyFile, "PEM file of its key");
  certificate->needs(key);
  key->needs(certificate);
  app.add_option("--faults", options.faultFile,
                 "JSON file that says what the controller does wrong")
      ->check(CLI::ExistingFile);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    exitStatus = app.exit(error);
    return false;
  }
  return true;
}

}  // namespace bmc
