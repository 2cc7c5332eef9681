#include "suite/local/pci/running_adapters.h"

#include <windows.h>
#include <cfgmgr32.h>
#include <setupapi.h>

#include <boost/nowide/convert.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "suite/local/pci/plug_and_play.h"

namespace local {
namespace {

// The ports above a function are few; a registry that names itself as its own
// parent must not hold the run.
constexpr int kMostPorts = 16;

// The devices that the registry lists.
class DeviceSet {
 public:
  DeviceSet()
      : set_(SetupDiGetClassDevsW(nullptr, L"PCI", nullptr,
                                  DIGCF_PRESENT | DIGCF_ALLCLASSES)) {}
  ~DeviceSet() {
    if (set_ != INVALID_HANDLE_VALUE) {
      SetupDiDestroyDeviceInfoList(set_);
    }
  }
  DeviceSet(const DeviceSet&) = delete;
  DeviceSet& operator=(const DeviceSet&) = delete;

  // False behind the last one.
  bool select(DWORD index) {
    device_ = {};
    device_.cbSize = sizeof device_;
    return set_ != INVALID_HANDLE_VALUE &&
           SetupDiEnumDeviceInfo(set_, index, &device_) != 0;
  }

  DEVINST instance() const { return device_.DevInst; }

  std::vector<unsigned char> bytes(DWORD property) {
    DWORD size = 0;
    SetupDiGetDeviceRegistryPropertyW(set_, &device_, property, nullptr,
                                      nullptr, 0, &size);
    std::vector<unsigned char> value(size);
    if (size == 0 ||
        SetupDiGetDeviceRegistryPropertyW(set_, &device_, property, nullptr,
                                          value.data(), size, nullptr) == 0) {
      value.clear();
    }
    return value;
  }

 private:
  HDEVINFO set_;
  SP_DEVINFO_DATA device_ = {};
};

// Texts of a value that holds several, each with a zero behind it.
std::vector<std::string> texts(const std::vector<unsigned char>& value) {
  std::vector<std::string> found;
  std::wstring text;
  for (std::size_t i = 0; i + 1 < value.size(); i += 2) {
    const auto unit = static_cast<wchar_t>(
        value[i] | static_cast<unsigned>(value[i + 1]) << 8U);
    if (unit != L'\0') {
      text.push_back(unit);
    } else if (!text.empty()) {
      found.push_back(boost::nowide::narrow(text));
      text.clear();
    }
  }
  if (!text.empty()) {
    found.push_back(boost::nowide::narrow(text));
  }
  return found;
}

std::string text(const std::vector<unsigned char>& value) {
  const auto all = texts(value);
  return all.empty() ? std::string() : all.front();
}

std::optional<std::uint32_t> number(const std::vector<unsigned char>& value) {
  if (value.size() != 4) {
    return std::nullopt;
  }
  std::uint32_t result = 0;
  for (std::size_t i = 4; i > 0; --i) {
    result = result << 8U | value[i - 1];
  }
  return result;
}

// A property of a device that is known by its node alone.
std::vector<unsigned char> nodeBytes(DEVINST node, ULONG property) {
  ULONG size = 0;
  CM_Get_DevNode_Registry_PropertyW(node, property, nullptr, nullptr, &size, 0);
  std::vector<unsigned char> value(size);
  if (size == 0 ||
      CM_Get_DevNode_Registry_PropertyW(node, property, nullptr, value.data(),
                                        &size, 0) != CR_SUCCESS) {
    value.clear();
  }
  return value;
}

std::vector<PnpPlace> portsAbove(DEVINST node) {
  std::vector<PnpPlace> ports;
  for (int i = 0; i < kMostPorts; ++i) {
    DEVINST parent = 0;
    if (CM_Get_Parent(&parent, node, 0) != CR_SUCCESS) {
      break;
    }
    node = parent;
    PnpPlace place;
    place.bus = number(nodeBytes(node, CM_DRP_BUSNUMBER));
    place.address = number(nodeBytes(node, CM_DRP_ADDRESS));
    ports.push_back(place);
  }
  return ports;
}

}  // namespace

std::vector<PciFacts> runningAdapters(const PciContext& context) {
  std::vector<PnpFunction> functions;
  DeviceSet devices;
  for (DWORD index = 0; devices.select(index); ++index) {
    PnpFunction function;
    function.place.bus = number(devices.bytes(SPDRP_BUSNUMBER));
    function.place.address = number(devices.bytes(SPDRP_ADDRESS));
    function.place.location = text(devices.bytes(SPDRP_LOCATION_INFORMATION));
    function.above = portsAbove(devices.instance());
    function.ids = texts(devices.bytes(SPDRP_HARDWAREID));
    for (std::string& id : texts(devices.bytes(SPDRP_COMPATIBLEIDS))) {
      function.ids.push_back(std::move(id));
    }
    function.manufacturer = text(devices.bytes(SPDRP_MFG));
    function.description = text(devices.bytes(SPDRP_FRIENDLYNAME));
    if (function.description.empty()) {
      function.description = text(devices.bytes(SPDRP_DEVICEDESC));
    }
    function.driverBound = !devices.bytes(SPDRP_SERVICE).empty();
    functions.push_back(std::move(function));
  }
  return pciFacts(functions, context);
}

}  // namespace local
