// A whole service: a controller that answers by the input is crawled, and all
// that it tells is mapped to records and alerts, which have to be what the
// module relies on. An input is a row of answers, each a line
// "@STATUS TARGET" ("@STATUS POST TARGET", "@STATUS DELETE TARGET") and the
// body up to the next such line. What is asked for and not there is a 404.
#include "suite/redfish/service.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fuzz/check.h"
#include "suite/base/text.h"
#include "suite/run/run.h"
#include "syshealth/health/dev_health.h"

namespace {

using http::Answer;
using http::Method;
using http::Request;

class FuzzTransport : public http::Transport {
 public:
  explicit FuzzTransport(std::string_view input) {
    while (!input.empty()) {
      const std::size_t next = input.find("\n@");
      add(input.substr(0, next));
      input = next == input.npos ? std::string_view() : input.substr(next + 1);
    }
  }

  const std::string& address() const override { return address_; }
  bool live() const override { return true; }

  std::uint64_t start(Request request) override {
    const char* method = request.method == Method::kPost     ? "POST "
                         : request.method == Method::kDelete ? "DELETE "
                                                             : "";
    const auto found = answers_.find(method + request.target);
    Answer answer;
    answer.status = 404;
    if (found != answers_.end()) {
      answer = http::Answer(found->second);
    }
    answer.id = ++last_;
    ready_.push_back(std::move(answer));
    return last_;
  }

  std::optional<Answer> next(base::Clock::time_point) override {
    if (ready_.empty()) {
      return std::nullopt;
    }
    Answer answer = std::move(ready_.front());
    ready_.pop_front();
    return answer;
  }

  void cancelAll() override { ready_.clear(); }
  http::TransportStats stats() const override { return {}; }

 private:
  void add(std::string_view text) {
    const std::size_t lineEnd = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, lineEnd);
    const std::size_t blank = line.find(' ');
    if (line.empty() || line.front() != '@' || blank == line.npos) {
      return;
    }
    Answer answer;
    for (const char digit :
         line.substr(1, std::min<std::size_t>(blank, 4) - 1)) {
      answer.status = answer.status * 10 + (digit & 7);
    }
    // Statuses that are waited for before they are repeated say nothing new.
    if (answer.status == 429 || answer.status >= 500) {
      answer.status = 501;
    }
    const std::string_view target = line.substr(blank + 1);
    if (target.compare(0, 5, "POST ") == 0) {
      answer.authToken = base::Secret("token");
    }
    answer.body = text.substr(std::min(lineEnd + 1, text.size()));
    answer.location = answer.status < 400
                          ? answer.body.substr(0, answer.body.find('\n'))
                          : std::string();
    answers_[std::string(target)] = std::move(answer);
  }

  std::map<std::string, Answer> answers_;
  std::deque<Answer> ready_;
  std::string address_ = "fuzz";
  std::uint64_t last_ = 0;
};

// Texts that reach the console are clean: cleaning them changes nothing.
template <typename... Text>
void checkTexts(const Text&... texts) {
  (check(base::cleanText(texts) == texts), ...);
}

void checkAlerts(const std::vector<Tarvex::DeviceHealth::Alert>& alerts) {
  static const std::set<std::string> kCategories = {
      "System", "Processors", "Cooling", "Memory",
      "PCI",    "Power",      "Disks",   "Other"};
  for (const auto& alert : alerts) {
    check(alert.severity >= 0 && alert.severity <= 2);
    check(kCategories.count(alert.category) == 1);
    checkTexts(alert.messageId, alert.message, alert.extra);
  }
}

// Reads a node in every way that the module does.
void readNode(std::uint16_t nodeIndex) {
  using namespace Tarvex::DeviceHealth;
  Tarvex::TarvexConnection::ConnectionInfo connection;
  connection.nodeIndex = nodeIndex;
  DevHealth client(connection);
  SystemBoard board;
  std::vector<Processor> processors;
  std::vector<Fan> fans;
  std::vector<DIMM> dimms;
  std::vector<Power> powers;
  std::vector<PCIAdapter> adapters;
  std::vector<Alert> alerts;
  if (client.get_system(board) == 0) {
    checkTexts(board.machineName, board.machineTypeModel, board.serialNumber,
               board.uuid);
  }
  if (client.get_processors(processors) == 0) {
    for (const Processor& row : processors) {
      checkTexts(row.name, row.family, row.currentClockSpeed, row.maxClockSpeed,
                 row.healthState);
    }
  }
  if (client.get_fans(fans) == 0) {
    for (const Fan& row : fans) {
      checkTexts(row.elementName, row.desiredSpeed, row.healthState);
    }
  }
  if (client.get_DIMMs(dimms) == 0) {
    for (const DIMM& row : dimms) {
      checkTexts(row.description, row.partNumber, row.serialNumber,
                 row.manufacturer, row.model, row.maxMemorySpeed);
    }
  }
  if (client.get_Powers(powers) == 0) {
    for (const Power& row : powers) {
      checkTexts(row.elementName, row.totalOutputPower, row.healthState);
    }
  }
  if (client.get_PCIApaters(adapters) == 0) {
    for (const PCIAdapter& row : adapters) {
      checkTexts(row.description, row.tag, row.manufacturer, row.model,
                 row.serialNumber, row.partNumber, row.sku,
                 row.operationalStatus, row.statusDescriptions);
    }
  }
  if (client.connect() == 0 && client.getHealthSum(alerts) == 0) {
    checkAlerts(alerts);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  redfish::ServiceOptions options;
  options.user = "u";
  options.password = base::Secret("pass-word");
  run::Run run;
  run.pool().add(std::make_unique<redfish::Service>(
      options, std::make_unique<FuzzTransport>(input)));
  readNode(0);
  readNode(1);
  return 0;
}
