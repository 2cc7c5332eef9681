#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/suite/local/table_builder.h"

namespace local {

/// The data of a Redfish over IP record: static IPv4 on both ends, service
/// at 169.254.0.17:443, UUID 01112233-4455-6677-8899-aabbccddeeff. Tests
/// change single bytes of it.
std::string serviceRecord(const std::string& hostName = "");

/// Device parts, the type byte first.
std::string usbDevice(unsigned vendor, unsigned product);
std::string pciDevice(unsigned vendor, unsigned device);
std::string usbV2Device(unsigned vendor, unsigned product,
                        const std::string& mac, unsigned characteristics = 0);
std::string pciV2Device(unsigned vendor, unsigned device,
                        const std::string& mac, unsigned characteristics = 0);

/// A host interface structure of a device part and the data of its Redfish
/// over IP records.
Structure hostInterface(const std::string& device,
                        const std::vector<std::string>& records);

}  // namespace local
