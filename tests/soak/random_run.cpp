#include "tests/soak/random_run.h"

#include <csignal>
#include <cstddef>
#include <random>

namespace soak {
namespace {

// Numbers from a seed. The distributions of the standard library differ from
// one to the other; the engine does not.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : engine_(seed) {}

  // From 0 to one less than the limit.
  std::size_t below(std::size_t limit) { return engine_() % limit; }
  bool oneIn(std::size_t count) { return below(count) == 0; }

  template <std::size_t Size>
  std::string pick(const char* const (&choices)[Size]) {
    return choices[below(Size)];
  }

 private:
  std::mt19937_64 engine_;
};

std::string quoted(const std::string& text) { return '"' + text + '"'; }

std::string randomPath(Dice& dice) {
  return dice.pick({"/redfish/v1", "/redfish/v1/Systems",
                    "/redfish/v1/Systems/*", "/redfish/v1/Chassis",
                    "/redfish/v1/Chassis/*", "/redfish/v1/Managers*",
                    "/redfish/v1/*/Memory/*", "/redfish/v1/*/Processors*",
                    "/redfish/v1/*/Thermal*", "/redfish/v1/*/Power*",
                    "/redfish/v1/*/Storage*", "/redfish/v1/*/*/*", "*"});
}

// A value that is the password itself would stand in the report, where it is
// nothing but what the controller says of its parts.
std::string randomValue(Dice& dice) {
  return dice.pick(
      {"null", "true", "-1", "1e308", "18446744073709551616", "\"\"",
       "\"\\u202e\\u200b\\u001b[2J\"", "[]", "{}", "[null,[],{}]",
       "{\"@odata.id\":\"/redfish/v1/\"}",
       "{\"@odata.id\":\"https://elsewhere.example/redfish/v1/\"}",
       "{\"@odata.id\":\"/redfish/v1/Systems/../../etc/passwd\"}"});
}

std::string randomAnswer(Dice& dice, RandomRun& run) {
  const std::string status =
      dice.pick({"200", "201", "204", "301", "307", "308", "400", "401", "403",
                 "404", "405", "412", "429", "500", "501", "503", "599"});
  // To be told that a session has ended is not to know that it has not.
  run.mayLoseSession = run.mayLoseSession || status == "401";
  const std::string headers = dice.pick(
      {"", R"(,"headers":{"Retry-After":"1"})",
       R"(,"headers":{"Retry-After":"Fri, 31 Dec 9999 23:59:59 GMT"})",
       R"(,"headers":{"Location":"${target}"})",
       R"(,"headers":{"Location":"https://${https}/redfish/v1/Nothing-2-Hide"})",
       R"(,"headers":{"Location":"http://${http}/redfish/v1/"})",
       R"(,"headers":{"Content-Type":"text/html"})",
       R"(,"headers":{"Content-Length":"5"})",
       R"(,"headers":{"Content-Encoding":"gzip, gzip"})",
       R"(,"headers":{"X-Auth-Token":"Nothing-2-Hide"})"});
  const std::string body = dice.pick(
      {"", R"(,"error":"Base.1.0.GeneralError")",
       R"(,"body":"{\"error\":{\"message\":\"Nothing-2-Hide\"}}")",
       R"(,"body":{"parts":[{"text":"["},{"text":"[","times":300}]})",
       R"(,"body":{"parts":[{"text":"{\"a\":"},{"noise":5000}]})",
       R"(,"body":{"parts":[{"hex":"fffe00"},{"noise":70000}]})",
       R"(,"body":{"gzip":true,"parts":[{"text":"{\"a\": 1}"}]})",
       R"(,"body":{"gzip":true,"parts":[{"text":"        ","times":4000000}]})",
       R"(,"body":{"parts":[{"text":"{\"Members\":[{\"@odata.id\":\"/redfish/v1/A\"}"},)"
       R"({"text":",{\"@odata.id\":\"/redfish/v1/A/#########\"}","times":5000},{"text":"]}"}]})"});
  return "{\"status\":" + status + headers + body + "}";
}

std::string randomDelivery(Dice& dice) {
  return dice.pick({R"({"cutAfter":40,"ending":"close"})",
                    R"({"cutAfter":40,"ending":"reset"})",
                    R"({"cutAfter":40,"ending":"keep"})",
                    R"({"silent":true,"ending":"close"})",
                    R"({"silent":true,"ending":"reset"})",
                    R"({"silent":true,"ending":"keep"})", R"({"delayMs":200})",
                    R"({"stepBytes":7,"stepMs":1})",
                    R"({"stepBytes":200,"stepMs":5,"chunked":true})",
                    R"({"ending":"close"})", R"({"ending":"reset"})",
                    R"({"chunked":true})"});
}

std::string randomRule(Dice& dice, RandomRun& run) {
  std::string match = "\"path\":" + quoted(randomPath(dice));
  if (dice.oneIn(6)) {
    // The login and the logout themselves.
    match = dice.pick({R"("method":"POST")", R"("method":"DELETE")"});
    run.mayLoseSession = true;
  } else {
    match += R"(,"method":"GET")";
  }
  if (!dice.oneIn(3)) {
    match += ",\"nth\":" + quoted(dice.pick({"1", "2", "1-2", "2-", "3-"}));
  }
  std::string rule = "{\"match\":{" + match + "}";
  const std::size_t kind = dice.below(4);
  const bool login = match.find("POST") != std::string::npos;
  run.mayHideSession = run.mayHideSession || (login && kind < 3);
  switch (kind) {
    case 0:
      rule += ",\"answer\":" + randomAnswer(dice, run);
      break;
    case 1:
      rule += ",\"change\":" + randomAnswer(dice, run);
      break;
    case 2:
      rule += R"(,"change":{"fill":)" + randomValue(dice) + "}";
      break;
    default:
      rule += ",\"delivery\":" + randomDelivery(dice);
      break;
  }
  return rule + "}";
}

std::string randomTreeEdit(Dice& dice) {
  const std::string path = quoted(randomPath(dice) + "*");
  if (dice.oneIn(3)) {
    return "{\"path\":" + path + ",\"absent\":true}";
  }
  const std::string pointer =
      dice.pick({"/Members", "/Members/0", "/Links", "/Status", "/Name",
                 "/Status/Health", "/SerialNumber", "/Processors", "/Memory",
                 "/Chassis", "/Systems", "/Links/ManagedBy", "/Conditions"});
  return "{\"path\":" + path + ",\"set\":{" + quoted(pointer) + ":" +
         randomValue(dice) + "}}";
}

std::string randomFaults(Dice& dice, RandomRun& run) {
  std::string rules;
  for (std::size_t count = 1 + dice.below(3); count > 0; --count) {
    rules += (rules.empty() ? "" : ",") + randomRule(dice, run);
  }
  std::string faults = "{\"rules\":[" + rules + "]";
  if (dice.oneIn(3)) {
    faults +=
        ",\"tree\":[" + randomTreeEdit(dice) + "," + randomTreeEdit(dice) + "]";
  }
  if (dice.oneIn(6)) {
    run.mayLoseSession = true;
    const std::string event =
        dice.pick({R"("onAccept":"close")", R"("onAccept":"reset")",
                   R"("onAccept":"stall")", R"("afterHandshake":"close")",
                   R"("afterHandshake":"reset")", R"("afterHandshake":"stall")",
                   R"("plainText":true)"});
    faults += ",\"connections\":[{\"numbers\":" +
              quoted(dice.pick({"1", "2", "3", "2-", "3-"})) + "," + event +
              "}]";
  }
  if (dice.oneIn(8)) {
    faults += R"(,"sessions":{"expireAfter":)" +
              std::to_string(1 + dice.below(6)) + R"(,"times":1})";
  }
  return faults + "}";
}

}  // namespace

RandomRun randomRun(std::uint64_t seed) {
  Dice dice(seed);
  RandomRun run;
  run.sample =
      dice.pick({"rack-server", "two-node", "old-schema", "tagged-server"});
  run.faults = randomFaults(dice, run);
  if (dice.oneIn(4)) {
    run.bmc = {"--expand", "4"};
  }
  run.arguments = {"--timeout", "0.4", "--deadline", "1.5"};
  if (dice.oneIn(3)) {
    run.arguments.insert(run.arguments.end(), {"--log-level", "4"});
  }
  if (dice.oneIn(4)) {
    run.arguments.insert(run.arguments.end(),
                         {"--max-connections", dice.pick({"1", "2", "16"})});
  }
  run.arguments.emplace_back("syshealth");
  if (!dice.oneIn(3)) {
    run.arguments.insert(
        run.arguments.end(),
        {"--device", dice.pick({"all", "system", "dimm", "fan,power",
                                "processor", "pci_adapter", "all,bogus"})});
  }
  if (dice.oneIn(6)) {
    run.signal = dice.oneIn(2) ? SIGTERM : SIGINT;
    run.after = std::chrono::milliseconds(dice.below(150));
  }
  if (dice.oneIn(10)) {
    run.closed = {static_cast<int>(dice.below(3))};
  }
  return run;
}

}  // namespace soak
