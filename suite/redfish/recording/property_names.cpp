#include "suite/redfish/recording/property_names.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "suite/base/ascii.h"
#include "suite/base/time_limit.h"

namespace redfish {
namespace {

// What the name of an identifying member contains, in small letters.
constexpr std::string_view kIdentifyingParts[] = {
    "serialn",      "assettag", "servicetag",
    "servicecode",  "uuid",     "macaddress",
    "worldwide",    "wwn",      "wwpn",
    "durablename",  "eui64",    "initiatorn",
    "hardwareaddr", "uniqueid", "identificationnumber",
    "licensekey",
};

// What it ends with.
constexpr std::string_view kIdentifyingEnds[] = {
    "serial", "hostname", "fqdn",  "domainname", "username",
    "nodeid", "guid",     "guids", "loginname",
};

constexpr std::string_view kSecretEnds[] = {
    "password",        "passphrase",        "token",         "secret",
    "communitystring", "authenticationkey", "encryptionkey", "privatekey",
};

constexpr std::string_view kFormat[] = {
    "@odata.type",
    "messageid",
    "health",
    "healthrollup",
    "state",
    "severity",
    "messageseverity",
    "processortype",
    "memorytype",
    "memorydevicetype",
    "basemoduletype",
    "systemtype",
    "chassistype",
    "powerstate",
    "indicatorled",
    "readingunits",
    "physicalcontext",
    "protocol",
    "mediatype",
    "devicetype",
    "powersupplytype",
    "managertype",
    "mode",
    "roleid",
};

template <typename List>
bool containsAny(const List& list, std::string_view text) {
  return std::any_of(std::begin(list), std::end(list),
                     [text](std::string_view part) {
                       return text.find(part) != std::string_view::npos;
                     });
}

template <typename List>
bool endsWithAny(const List& list, std::string_view text) {
  return std::any_of(std::begin(list), std::end(list),
                     [text](std::string_view end) {
                       return text.size() >= end.size() &&
                              text.substr(text.size() - end.size()) == end;
                     });
}

// Letters and digits alone, small: "Serial_Number" is "serialnumber".
std::string plainName(std::string_view name) {
  std::string plain;
  for (const char c : name) {
    base::heedTime();
    if (base::isAlphanumeric(c)) {
      plain += base::lower(c);
    }
  }
  return plain;
}

// An annotation says something about a member and is not its value.
bool isAnnotation(std::string_view name) {
  return name.find('@') != std::string_view::npos;
}

bool isVersion(std::string_view lower) {
  return lower.find("version") != std::string_view::npos ||
         lower.find("revision") != std::string_view::npos ||
         lower.find("build") != std::string_view::npos;
}

}  // namespace

PropertyRole roleOf(std::string_view name) {
  const std::string plain = plainName(name);
  const std::string lower = base::lowerCase(name);
  PropertyRole role;
  role.identifying =
      !isAnnotation(name) && (containsAny(kIdentifyingParts, plain) ||
                              endsWithAny(kIdentifyingEnds, plain));
  role.secret = !isAnnotation(name) && endsWithAny(kSecretEnds, plain);
  role.format = std::find(std::begin(kFormat), std::end(kFormat), lower) !=
                std::end(kFormat);
  role.version = isVersion(lower);
  return role;
}

}  // namespace redfish
