#include "tests/bmc/server.h"

#include <algorithm>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ssl/context.hpp>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <utility>

#include "tests/bmc/control/control_client.h"
#include "tests/bmc/control/control_service.h"
#include "tests/bmc/control/lifeline.h"
#include "tests/bmc/control/ready.h"
#include "tests/bmc/faults/fault_file.h"
#include "tests/bmc/faults/faulty_responder.h"
#include "tests/bmc/faults/planned_connections.h"
#include "tests/bmc/ipmi/ipmi_port.h"
#include "tests/bmc/record/counters.h"
#include "tests/bmc/record/journal.h"
#include "tests/bmc/service/compressing.h"
#include "tests/bmc/service/delayed.h"
#include "tests/bmc/service/redfish_service.h"
#include "tests/bmc/service/tree.h"
#include "tests/bmc/wire/certificate.h"
#include "tests/bmc/wire/connection.h"
#include "tests/bmc/wire/connection_policy.h"
#include "tests/bmc/wire/listener.h"
#include "tests/bmc/wire/tls_context.h"
#include "tests/support/file_text.h"

namespace bmc {
namespace {

std::optional<std::string> readFile(const std::string& path,
                                    std::string& error) {
  auto text = support::readFile(path);
  if (!text) {
    error = path + ": cannot be read";
  }
  return text;
}

std::optional<std::string> readPassword(const std::string& path,
                                        std::string& error) {
  if (path.empty()) {
    return kDefaultPassword;
  }
  auto text = readFile(path, error);
  if (text) {
    text->erase(std::min(text->find_first_of("\r\n"), text->size()));
  }
  return text;
}

}  // namespace

// In the order of their making; what a part refers to stands before it.
struct Server::Parts {
  explicit Parts(const std::string& logPath) : journal(logPath) {}

  Counters counters;
  Counters controlCounters;  // The control port is not part of the service.
  Journal journal;
  FaultPlan faults;
  std::optional<PlannedConnections> connections;
  ServeAll serveAll;
  std::optional<RedfishService> service;
  std::optional<FaultyResponder> faulty;
  std::optional<Compressing> compressing;
  std::optional<Delayed> delayed;
  std::optional<ControlService> control;
  std::optional<Processor> processor;
  Processor controlProcessor{Effort()};
  std::unique_ptr<boost::asio::ssl::context> tls;
  std::optional<Environment> environment;
  std::optional<Environment> controlEnvironment;
  Ready ready;
  boost::asio::io_context io{1};  // Connections in it end before the others.
  std::optional<Listener> http;
  std::optional<Listener> https;
  std::optional<Listener> controlPort;
  std::optional<IpmiPort> ipmi;
  std::optional<Lifeline> lifeline;
};

Server::Server(Options options) : options_(std::move(options)) {}

Server::~Server() = default;

bool Server::start(std::string& error) {
  std::error_code code;
  std::filesystem::create_directories(options_.directory, code);
  parts_ = std::make_unique<Parts>(options_.directory + "/log.jsonl");
  if (!parts_->journal.good()) {
    error = parts_->journal.path() + ": cannot be written";
    return false;
  }
  if (!readFaults(error) || !makeService(error) || !makeTls(error) ||
      !listen(error)) {
    return false;
  }
  if (!writeReady(parts_->ready, options_.directory)) {
    error = options_.directory + ": cannot be written";
    return false;
  }
  return true;
}

bool Server::run() {
  parts_->io.run();
  std::ofstream file(options_.directory + "/counters.json",
                     std::ios::binary | std::ios::trunc);
  file << toJson(parts_->counters) << '\n' << std::flush;
  return file.good();
}

bool Server::readFaults(std::string& error) {
  if (!options_.faultFile.empty()) {
    auto plan = readFaultFile(options_.faultFile, error);
    if (!plan) {
      return false;
    }
    parts_->faults = std::move(*plan);
  }
  return true;
}

bool Server::makeService(std::string& error) {
  auto tree = Tree::load(options_.tree, error);
  if (!tree) {
    return false;
  }
  const auto password = readPassword(options_.passwordFile, error);
  if (!password) {
    return false;
  }

  ServiceSettings settings;
  settings.account = {options_.user, *password};
  settings.open = options_.open;
  settings.maxSessions = options_.maxSessions;
  settings.maxExpandLevels = options_.expand;
  settings.pageSize = options_.pageSize;
  settings.sessionLife = parts_->faults.sessions;
  for (const TreeEdit& edit : parts_->faults.tree) {
    apply(edit, *tree);
  }
  parts_->service.emplace(std::move(*tree), settings, parts_->counters);
  parts_->faulty.emplace(*parts_->service, parts_->faults.rules);
  Responder* outermost = &*parts_->faulty;
  if (options_.gzip) {
    outermost = &parts_->compressing.emplace(*outermost);
  }
  parts_->delayed.emplace(*outermost,
                          std::chrono::milliseconds(options_.delayMs));
  parts_->control.emplace(parts_->counters, parts_->journal);
  return true;
}

bool Server::makeTls(std::string& error) {
  const TlsFaults& faults = parts_->faults.tls;
  Identity identity;
  if (options_.certificateFile.empty()) {
    const ServerIdentity made = makeServerIdentity(faults.certificate);
    identity = made.identity;
    options_.certificateFile = options_.directory + "/certificate.pem";
    std::ofstream(options_.certificateFile, std::ios::binary) << made.trust;
  } else {
    auto certificate = readFile(options_.certificateFile, error);
    auto key = readFile(options_.keyFile, error);
    if (!certificate || !key) {
      return false;
    }
    identity = {std::move(*certificate), std::move(*key)};
  }
  parts_->ready.certificate = options_.certificateFile;
  parts_->ready.pin = pinOf(identity.certificate);
  parts_->tls = makeTlsContext(identity, faults, error);
  return parts_->tls != nullptr;
}

bool Server::listen(std::string& error) {
  Parts& parts = *parts_;
  parts.connections.emplace(parts.faults.connections);
  parts.processor.emplace(options_.effort);
  parts.environment.emplace(
      Environment{parts.io, *parts.delayed, *parts.connections,
                  *parts.processor, parts.counters, &parts.journal,
                  std::chrono::milliseconds(options_.roundTripMs)});
  parts.controlEnvironment.emplace(Environment{
      parts.io, *parts.control, parts.serveAll, parts.controlProcessor,
      parts.controlCounters, nullptr, std::chrono::milliseconds(0)});
  parts.http.emplace(*parts.environment, nullptr);
  parts.https.emplace(*parts.environment, parts.tls.get());
  parts.controlPort.emplace(*parts.controlEnvironment, nullptr);
  const std::string& address = options_.address;
  const std::string shown = address == "0.0.0.0" ? "127.0.0.1" : address;
  if (!parts.http->start(address, options_.httpPort, error) ||
      !parts.https->start(address, options_.httpsPort, error) ||
      !parts.controlPort->start(address, options_.controlPort, error)) {
    return false;
  }
  if (parts.faults.ipmi) {
    parts.ipmi.emplace(parts.io, *parts.faults.ipmi, parts.counters,
                       parts.journal);
    if (!parts.ipmi->start(address, options_.ipmiPort, error)) {
      return false;
    }
    parts.ready.ipmiPort = parts.ipmi->port();
  }
  parts.lifeline.emplace(parts.io);
  parts.ready.address = shown;
  parts.ready.httpPort = parts.http->port();
  parts.ready.httpsPort = parts.https->port();
  parts.ready.controlPort = parts.controlPort->port();
  parts.ready.log = parts.journal.path();
  parts.ready.user = options_.user;
  parts.faulty->setMarks({{"http", hostAndPort(shown, parts.http->port())},
                          {"https", hostAndPort(shown, parts.https->port())}});
  return true;
}

}  // namespace bmc
