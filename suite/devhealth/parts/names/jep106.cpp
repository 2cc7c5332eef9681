#include "suite/devhealth/parts/names/jep106.h"

#include <array>
#include <cstdint>
#include <optional>

#include "suite/base/ascii.h"
#include "suite/base/numbers.h"

namespace devhealth {
namespace {

struct Maker {
  unsigned int bank;
  unsigned int code;  // With its parity bit.
  std::string_view name;
};

// Makers of memory in JEP106.
// clang-format off
constexpr std::array<Maker, 16> kMakers = {{
    {1, 0x2C, "Micron"},
    {1, 0xAD, "SK Hynix"},
    {1, 0xC1, "Infineon"},
    {1, 0xCE, "Samsung"},
    {1, 0xDA, "Winbond"},
    {2, 0x4F, "Transcend"},
    {2, 0x94, "SMART Modular"},
    {2, 0x98, "Kingston"},
    {3, 0x9E, "Corsair"},
    {3, 0xFE, "Elpida"},
    {4, 0x0B, "Nanya"},
    {5, 0x43, "Ramaxel"},
    {5, 0xCB, "ADATA"},
    {6, 0x51, "Qimonda"},
    {6, 0x9B, "Crucial"},
    {11, 0x91, "CXMT"},
}};
// clang-format on

constexpr unsigned int kWithoutParity = 0x7F;

// The maker of a code behind so many continuation codes; empty for none.
std::string_view makerOf(unsigned int code, unsigned int continuations) {
  for (const Maker& maker : kMakers) {
    if ((maker.code & kWithoutParity) == (code & kWithoutParity) &&
        maker.bank == (continuations & kWithoutParity) + 1) {
      return maker.name;
    }
  }
  return {};
}

}  // namespace

std::string memoryMaker(std::string_view text) {
  std::string_view digits = text;
  if (base::startsIgnoringCase(digits, "0x")) {
    digits.remove_prefix(2);
  }
  const std::optional<std::uint32_t> number =
      digits.size() == 2 || digits.size() == 4 ? base::hexadecimal(digits)
                                               : std::nullopt;
  if (!number) {
    return std::string(text);
  }
  const unsigned int first = digits.size() == 2 ? 0 : *number >> 8;
  const unsigned int last = *number & 0xFF;
  std::string_view maker = makerOf(first, last);
  if (maker.empty()) {
    maker = makerOf(last, first);
  }
  return std::string(maker.empty() ? text : maker);
}

}  // namespace devhealth
