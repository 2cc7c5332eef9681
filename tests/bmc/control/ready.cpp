#include "tests/bmc/control/ready.h"

#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <cstdio>
#include <fstream>
#include <sstream>

#include "tests/bmc/control/control_client.h"
#include "tests/support/file_text.h"

namespace bmc {
namespace {

namespace json = boost::json;

bool writeFile(const std::string& path, const std::string& text) {
  const std::string draft = path + ".new";
  std::ofstream file(draft, std::ios::binary | std::ios::trunc);
  file << text;
  file.close();
  return file.good() && std::rename(draft.c_str(), path.c_str()) == 0;
}

std::string toShell(const Ready& ready) {
  const auto at = [&ready](std::uint16_t port) {
    return hostAndPort(ready.address, port);
  };
  std::ostringstream text;
  text << "BMC_HTTP='" << at(ready.httpPort) << "'\n"
       << "BMC_HTTPS='" << at(ready.httpsPort) << "'\n"
       << "BMC_CONTROL='" << at(ready.controlPort) << "'\n"
       << "BMC_IPMI='" << at(ready.ipmiPort) << "'\n"
       << "BMC_CERTIFICATE='" << ready.certificate << "'\n"
       << "BMC_PIN='" << ready.pin << "'\n"
       << "BMC_LOG='" << ready.log << "'\n"
       << "BMC_USER='" << ready.user << "'\n";
  return text.str();
}

std::string textIn(const json::object& object, const char* name) {
  const json::value* value = object.if_contains(name);
  const json::string* text = value == nullptr ? nullptr : value->if_string();
  return text == nullptr ? std::string() : std::string(*text);
}

std::uint16_t portIn(const json::object& object, const char* name) {
  const json::value* value = object.if_contains(name);
  json::error_code error;
  return value == nullptr ? std::uint16_t{0}
                          : value->to_number<std::uint16_t>(error);
}

}  // namespace

bool writeReady(const Ready& ready, const std::string& folder) {
  const json::object object{{"address", ready.address},
                            {"httpPort", ready.httpPort},
                            {"httpsPort", ready.httpsPort},
                            {"controlPort", ready.controlPort},
                            {"ipmiPort", ready.ipmiPort},
                            {"certificate", ready.certificate},
                            {"pin", ready.pin},
                            {"log", ready.log},
                            {"user", ready.user}};
  return writeFile(folder + "/ready.env", toShell(ready)) &&
         writeFile(folder + "/ready.json", json::serialize(object) + "\n");
}

bool readReady(const std::string& folder, Ready& ready) {
  json::error_code error;
  const json::value value =
      json::parse(support::fileText(folder + "/ready.json"), error);
  if (error || !value.is_object()) {
    return false;
  }
  const json::object& object = value.get_object();
  ready = {textIn(object, "address"),   portIn(object, "httpPort"),
           portIn(object, "httpsPort"), portIn(object, "controlPort"),
           portIn(object, "ipmiPort"),  textIn(object, "certificate"),
           textIn(object, "pin"),       textIn(object, "log"),
           textIn(object, "user")};
  return true;
}

}  // namespace bmc
