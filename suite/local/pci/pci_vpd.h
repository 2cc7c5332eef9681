#pragma once

#include <chrono>
#include <map>
#include <string>
#include <vector>

#include "suite/base/byte_view.h"
#include "suite/local/facts/root.h"

namespace local {

/// What a card's vital product data say of it.
struct VitalProductData {
  std::string serial;
  std::string partNumber;
  /// The end of the data was reached: there is nothing more to read.
  bool complete = false;
};

/// Reads vital product data (PCI Local Bus 3.0, appendix I) as far as the
/// bytes go; an invalid entry ends it.
VitalProductData parseVpd(base::ByteView bytes);

/// Reads the vital product data of PCI functions, given by the folder of
/// each, and returns what was read by its folder. Cards answer slowly, and
/// broken ones hang for seconds: what has not arrived after `limit` is left
/// out.
std::map<std::string, VitalProductData> readVpds(
    const Root& root, const std::vector<std::string>& folders,
    std::chrono::milliseconds limit);

}  // namespace local
