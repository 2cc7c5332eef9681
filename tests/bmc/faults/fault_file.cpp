#include "tests/bmc/faults/fault_file.h"

#include <openssl/ssl.h>

#include <array>
#include <boost/json/parse.hpp>
#include <vector>

#include "tests/bmc/faults/fault_rule_reader.h"
#include "tests/bmc/faults/json_edit_reader.h"
#include "tests/bmc/faults/object_reader.h"
#include "tests/support/file_text.h"

namespace bmc {
namespace {

namespace json = boost::json;

TlsFaults readTls(const json::value& value, const std::string& where,
                  std::string& error) {
  TlsFaults faults;
  ObjectReader reader(value, where, error);
  if (const auto kind = reader.word(
          "certificate", {"self-signed", "expired", "not-yet", "other-name",
                          "authority", "untrusted"})) {
    faults.certificate = static_cast<CertificateKind>(*kind);
  }
  if (const auto version =
          reader.word("maxVersion", {"TLSv1.1", "TLSv1.2", "TLSv1.3"})) {
    constexpr std::array kVersions{TLS1_1_VERSION, TLS1_2_VERSION,
                                   TLS1_3_VERSION};
    faults.maxVersion = kVersions.at(*version);
  }
  faults.resumption = !reader.flag("noResumption");
  reader.finish();
  return faults;
}

SessionLife readSessions(const json::value& value, const std::string& where,
                         std::string& error) {
  SessionLife life;
  ObjectReader reader(value, where, error);
  life.expireAfter = reader.number("expireAfter").value_or(0);
  life.times = reader.number("times").value_or(life.times);
  reader.finish();
  return life;
}

IpmiSettings readIpmi(const json::value& value, const std::string& where,
                      std::string& error) {
  IpmiSettings settings;
  ObjectReader reader(value, where, error);
  if (const auto kind = reader.word(
          "channel", {"2.0", "1.5", "rejects-2.0", "error", "bad-checksum",
                      "truncated", "garbage", "silent"})) {
    settings.channel = static_cast<IpmiAnswer>(*kind);
  }
  if (const auto pong = reader.word("presence", {"silent", "asf", "ipmi"})) {
    settings.pong = *pong != 0;
    settings.pongSaysIpmi = *pong == 2;
  }
  settings.ignoredFirst = reader.number("ignoredFirst").value_or(0);
  reader.finish();
  return settings;
}

ConnectionRule readConnection(const json::value& value,
                              const std::string& where, std::string& error) {
  const std::vector<std::string> words{"serve", "stall", "close", "reset",
                                       "drip"};
  ConnectionRule rule;
  ObjectReader reader(value, where, error);
  rule.numbers = reader.range("numbers");
  if (const auto word = reader.word("onAccept", words)) {
    rule.plan.onAccept = static_cast<Admission>(*word);
  }
  if (const auto word = reader.word("afterHandshake", words)) {
    rule.plan.afterHandshake = static_cast<Admission>(*word);
  }
  rule.plan.plainText = reader.flag("plainText");
  reader.finish();
  return rule;
}

TreeEdit readTreeEdit(const json::value& value, const std::string& where,
                      std::string& error) {
  TreeEdit edit;
  ObjectReader reader(value, where, error);
  edit.path = reader.text("path").value_or("");
  if (edit.path.empty()) {
    reader.complain("path", "is missing");
  }
  edit.absent = reader.flag("absent");
  edit.json = readJsonEdit(reader);
  reader.finish();
  return edit;
}

FaultPlan readPlan(const json::value& root, const std::string& folder,
                   std::string& error) {
  FaultPlan plan;
  ObjectReader reader(root, "", error);
  if (const auto* value = reader.any("tls")) {
    plan.tls = readTls(*value, "tls", error);
  }
  if (const auto* value = reader.any("sessions")) {
    plan.sessions = readSessions(*value, "sessions", error);
  }
  if (const auto* value = reader.any("ipmi")) {
    plan.ipmi = readIpmi(*value, "ipmi", error);
  }
  reader.each("connections", [&](const auto& entry, const auto& where) {
    plan.connections.push_back(readConnection(entry, where, error));
  });
  reader.each("tree", [&](const auto& entry, const auto& where) {
    plan.tree.push_back(readTreeEdit(entry, where, error));
  });
  reader.each("rules", [&](const auto& entry, const auto& where) {
    plan.rules.push_back(readRule(entry, folder, where, error));
  });
  reader.finish();
  return plan;
}

}  // namespace

std::optional<FaultPlan> readFaultFile(const std::string& path,
                                       std::string& error) {
  const auto text = support::readFile(path);
  if (!text) {
    error = path + ": cannot be read";
    return std::nullopt;
  }
  json::error_code code;
  const json::value root = json::parse(*text, code);
  if (code) {
    error = path + ": " + code.message();
    return std::nullopt;
  }
  const std::size_t slash = path.rfind('/');
  const std::string folder =
      slash == std::string::npos ? "." : path.substr(0, slash);
  std::string complaint;
  FaultPlan plan = readPlan(root, folder, complaint);
  if (complaint.empty()) {
    return plan;
  }
  error = path + ": " + complaint;
  return std::nullopt;
}

}  // namespace bmc
