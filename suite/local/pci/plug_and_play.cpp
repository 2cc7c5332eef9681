#include "suite/local/pci/plug_and_play.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "suite/base/ascii.h"
#include "suite/base/numbers.h"

namespace local {
namespace {

// The hexadecimal digits behind a mark in one of the IDs, as many as wanted.
std::optional<std::uint32_t> numberAt(const std::vector<std::string>& ids,
                                      std::string_view mark,
                                      std::size_t digits) {
  for (const std::string_view id : ids) {
    const std::size_t found = id.find(mark);
    if (found == std::string_view::npos) {
      continue;
    }
    const auto text = id.substr(found + mark.size(), digits);
    if (text.size() != digits) {
      continue;
    }
    if (const auto number = base::hexadecimal(text)) {
      return number;
    }
  }
  return std::nullopt;
}

// All decimal numbers of a text, in its order.
std::vector<std::uint32_t> numbersIn(std::string_view text) {
  std::vector<std::uint32_t> numbers;
  for (auto at = text.begin(); at != text.end();) {
    const auto begin = std::find_if(at, text.end(), base::isDigit);
    at = std::find_if_not(begin, text.end(), base::isDigit);
    // Longer digits than those of a number are no place.
    if (const auto number =
            base::parseNumber<std::uint32_t>(std::string(begin, at))) {
      numbers.push_back(*number);
    }
  }
  return numbers;
}

std::uint16_t half(const std::optional<std::uint32_t>& number) {
  return static_cast<std::uint16_t>(number.value_or(0) & 0xFFFFU);
}

PciIdentity identityOf(const std::vector<std::string>& ids) {
  PciIdentity identity;
  identity.vendor = half(numberAt(ids, "VEN_", 4));
  identity.device = half(numberAt(ids, "DEV_", 4));
  // The card, then its maker, in one number.
  const std::uint32_t subsystem = numberAt(ids, "SUBSYS_", 8).value_or(0);
  identity.subsystem = half(subsystem >> 16U);
  identity.subsystemVendor = half(subsystem);
  return identity;
}

}  // namespace

std::optional<PciAddress> addressOf(const PnpPlace& place) {
  std::uint32_t bus = 0;
  std::uint32_t device = 0;
  std::uint32_t function = 0;
  if (place.bus && place.address) {
    bus = *place.bus;
    device = *place.address >> 16U;
    function = *place.address & 0xFFFFU;
  } else {
    const auto numbers = numbersIn(place.location);
    if (numbers.size() < 3) {
      return std::nullopt;
    }
    bus = numbers[numbers.size() - 3];
    device = numbers[numbers.size() - 2];
    function = numbers[numbers.size() - 1];
  }
  if (device > 31 || function > 7) {
    return std::nullopt;
  }
  return PciAddress{bus >> 8U, static_cast<std::uint8_t>(bus & 0xFFU),
                    static_cast<std::uint8_t>(device),
                    static_cast<std::uint8_t>(function)};
}

std::vector<PciFacts> pciFacts(const std::vector<PnpFunction>& listed,
                               const PciContext& context) {
  std::vector<PciFunction> functions;
  std::vector<const PnpFunction*> sources;
  for (const PnpFunction& source : listed) {
    const auto address = addressOf(source.place);
    const auto code = numberAt(source.ids, "CC_", 6);
    if (!address || !code) {
      continue;
    }
    PciFunction function;
    function.address = *address;
    function.classCode = *code;
    function.identity = identityOf(source.ids);
    function.driverBound = source.driverBound;
    for (const PnpPlace& port : source.above) {
      if (const auto place = addressOf(port)) {
        function.above.push_back(*place);
      }
    }
    functions.push_back(std::move(function));
    sources.push_back(&source);
  }
  const PciIds ids =
      context.idsFile.empty() ? PciIds("") : configuredIds(context.idsFile);
  std::vector<PciFacts> adapters;
  for (const std::size_t index : chooseAdapters(functions)) {
    PciFacts facts = factsOf(functions[index], ids, context);
    if (facts.manufacturer.empty()) {
      facts.manufacturer = sources[index]->manufacturer;
    }
    if (facts.model.empty()) {
      facts.model = sources[index]->description;
    }
    adapters.push_back(std::move(facts));
  }
  return adapters;
}

}  // namespace local
