// Links, redirects and addresses as services and people write them.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/budget.h"
#include "fuzz/require.h"
#include "suite/connection/settings/address.h"
#include "suite/redfish/graph/json.h"
#include "suite/redfish/graph/uri.h"
#include "suite/redfish/session/redirect.h"

namespace {

bool isClean(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) {
    return static_cast<unsigned char>(c) > 0x20 && c != 0x7F && c != '\\';
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const StepBudget budget(2000, 50, size);
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  if (const auto uri = redfish::Uri::parse(text)) {
    require(uri->target().compare(0, 9, "/redfish/") == 0 ||
            uri->target() == "/redfish");
    require(isClean(uri->target()));
    const std::string path = uri->target().substr(0, uri->target().find('?'));
    require(path.find("/../") == std::string::npos);
    // What was accepted once is accepted again and means the same, unless
    // encoding it has made it too long.
    const auto again = redfish::Uri::parse(uri->target());
    require(again ? again->document() == uri->document()
                  : uri->target().size() > 1024);
  }
  if (const auto target = redfish::redirectTarget(text, "bmc.test:443")) {
    require(redfish::Uri::parse(*target) || target->size() > 1024);
  }
  if (const auto address = connection::parseAddress(text)) {
    require(address->user.find(':') == std::string::npos);
    const bool directory =
        address->scheme == connection::Address::Scheme::kDirectory;
    require(directory != address->directory.empty());
    require(directory != !address->host.empty());
  } else {
    require(!address.error().cause.empty());
  }
  if (const auto object = redfish::parseObject(text); !object) {
    require(!object.error().cause.empty());
  }
  return 0;
}
