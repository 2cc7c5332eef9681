#include "suite/local/smbios/smbios_names.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace local {
namespace {

struct Name {
  unsigned number;
  std::string_view text;
};

// Both tables are sorted by number; the tests check it.

// clang-format off
// DSP0134 3.7, Processor Information: Processor Family.
constexpr Name kProcessorFamilies[] = {
    {0x00B, "Intel Pentium"},
    {0x00C, "Intel Pentium Pro"},
    {0x00D, "Intel Pentium II"},
    {0x00E, "Intel Pentium with MMX"},
    {0x00F, "Intel Celeron"},
    {0x010, "Intel Pentium II Xeon"},
    {0x011, "Intel Pentium III"},
    {0x014, "Intel Celeron M"},
    {0x015, "Intel Pentium 4 HT"},
    {0x016, "Intel Processor"},
    {0x018, "AMD Duron"},
    {0x01D, "AMD Athlon"},
    {0x028, "Intel Core Duo"},
    {0x029, "Intel Core Duo mobile"},
    {0x02A, "Intel Core Solo mobile"},
    {0x02B, "Intel Atom"},
    {0x02C, "Intel Core M"},
    {0x02D, "Intel Core m3"},
    {0x02E, "Intel Core m5"},
    {0x02F, "Intel Core m7"},
    {0x03B, "AMD Opteron 6100"},
    {0x03C, "AMD Opteron 4100"},
    {0x03D, "AMD Opteron 6200"},
    {0x03E, "AMD Opteron 4200"},
    {0x03F, "AMD FX"},
    {0x046, "AMD C-Series"},
    {0x047, "AMD E-Series"},
    {0x048, "AMD A-Series"},
    {0x049, "AMD G-Series"},
    {0x04A, "AMD Z-Series"},
    {0x04B, "AMD R-Series"},
    {0x04C, "AMD Opteron 4300"},
    {0x04D, "AMD Opteron 6300"},
    {0x04E, "AMD Opteron 3300"},
    {0x04F, "AMD FirePro"},
    {0x066, "AMD Athlon X4 Quad-Core"},
    {0x067, "AMD Opteron X1000"},
    {0x068, "AMD Opteron X2000 APU"},
    {0x069, "AMD Opteron A-Series"},
    {0x06A, "AMD Opteron X3000 APU"},
    {0x06B, "AMD Zen"},
    {0x082, "Intel Itanium"},
    {0x083, "AMD Athlon 64"},
    {0x084, "AMD Opteron"},
    {0x085, "AMD Sempron"},
    {0x086, "AMD Turion 64 Mobile"},
    {0x087, "AMD Opteron Dual-Core"},
    {0x088, "AMD Athlon 64 X2 Dual-Core"},
    {0x089, "AMD Turion 64 X2 Mobile"},
    {0x08A, "AMD Opteron Quad-Core"},
    {0x08B, "AMD Opteron Third-Generation"},
    {0x08C, "AMD Phenom FX Quad-Core"},
    {0x08D, "AMD Phenom X4 Quad-Core"},
    {0x08E, "AMD Phenom X2 Dual-Core"},
    {0x08F, "AMD Athlon X2 Dual-Core"},
    {0x0A1, "Intel Xeon 3200 Quad-Core"},
    {0x0A2, "Intel Xeon 3000 Dual-Core"},
    {0x0A3, "Intel Xeon 5300 Quad-Core"},
    {0x0A4, "Intel Xeon 5100 Dual-Core"},
    {0x0A5, "Intel Xeon 5000 Dual-Core"},
    {0x0A6, "Intel Xeon LV Dual-Core"},
    {0x0A7, "Intel Xeon ULV Dual-Core"},
    {0x0A8, "Intel Xeon 7100 Dual-Core"},
    {0x0A9, "Intel Xeon 5400 Quad-Core"},
    {0x0AA, "Intel Xeon Quad-Core"},
    {0x0AB, "Intel Xeon 5200 Dual-Core"},
    {0x0AC, "Intel Xeon 7200 Dual-Core"},
    {0x0AD, "Intel Xeon 7300 Quad-Core"},
    {0x0AE, "Intel Xeon 7400 Quad-Core"},
    {0x0AF, "Intel Xeon 7400 Multi-Core"},
    {0x0B0, "Intel Pentium III Xeon"},
    {0x0B1, "Intel Pentium III with SpeedStep"},
    {0x0B2, "Intel Pentium 4"},
    {0x0B3, "Intel Xeon"},
    {0x0B5, "Intel Xeon MP"},
    {0x0B6, "AMD Athlon XP"},
    {0x0B7, "AMD Athlon MP"},
    {0x0B8, "Intel Itanium 2"},
    {0x0B9, "Intel Pentium M"},
    {0x0BA, "Intel Celeron D"},
    {0x0BB, "Intel Pentium D"},
    {0x0BC, "Intel Pentium Extreme Edition"},
    {0x0BD, "Intel Core Solo"},
    {0x0BF, "Intel Core 2 Duo"},
    {0x0C0, "Intel Core 2 Solo"},
    {0x0C1, "Intel Core 2 Extreme"},
    {0x0C2, "Intel Core 2 Quad"},
    {0x0C3, "Intel Core 2 Extreme mobile"},
    {0x0C4, "Intel Core 2 Duo mobile"},
    {0x0C5, "Intel Core 2 Solo mobile"},
    {0x0C6, "Intel Core i7"},
    {0x0C7, "Intel Celeron Dual-Core"},
    {0x0CD, "Intel Core i5"},
    {0x0CE, "Intel Core i3"},
    {0x0CF, "Intel Core i9"},
    {0x0D0, "Intel Xeon D"},
    {0x0D2, "VIA C7-M"},
    {0x0D3, "VIA C7-D"},
    {0x0D4, "VIA C7"},
    {0x0D5, "VIA Eden"},
    {0x0D6, "Intel Xeon Multi-Core"},
    {0x0D7, "Intel Xeon 3xxx Dual-Core"},
    {0x0D8, "Intel Xeon 3xxx Quad-Core"},
    {0x0D9, "VIA Nano"},
    {0x0DA, "Intel Xeon 5xxx Dual-Core"},
    {0x0DB, "Intel Xeon 5xxx Quad-Core"},
    {0x0DD, "Intel Xeon 7xxx Dual-Core"},
    {0x0DE, "Intel Xeon 7xxx Quad-Core"},
    {0x0DF, "Intel Xeon 7xxx Multi-Core"},
    {0x0E0, "Intel Xeon 3400 Multi-Core"},
    {0x0E4, "AMD Opteron 3000"},
    {0x0E5, "AMD Sempron II"},
    {0x0E6, "AMD Opteron Quad-Core Embedded"},
    {0x0E7, "AMD Phenom Triple-Core"},
    {0x0E8, "AMD Turion Ultra Dual-Core Mobile"},
    {0x0E9, "AMD Turion Dual-Core Mobile"},
    {0x0EA, "AMD Athlon Dual-Core"},
    {0x0EB, "AMD Sempron SI"},
    {0x0EC, "AMD Phenom II"},
    {0x0ED, "AMD Athlon II"},
    {0x0EE, "AMD Opteron Six-Core"},
    {0x0EF, "AMD Sempron M"},
    {0x100, "ARMv7"},
    {0x101, "ARMv8"},
    {0x102, "ARMv9"},
    {0x200, "RISC-V RV32"},
    {0x201, "RISC-V RV64"},
    {0x202, "RISC-V RV128"},
    {0x258, "LoongArch"},
    {0x300, "Intel Core 3"},
    {0x301, "Intel Core 5"},
    {0x302, "Intel Core 7"},
    {0x303, "Intel Core 9"},
    {0x304, "Intel Core Ultra 3"},
    {0x305, "Intel Core Ultra 5"},
    {0x306, "Intel Core Ultra 7"},
    {0x307, "Intel Core Ultra 9"},
};

// DSP0134 3.7, Memory Device: Type.
constexpr Name kMemoryTypes[] = {
    {0x03, "DRAM"},
    {0x04, "EDRAM"},
    {0x05, "VRAM"},
    {0x06, "SRAM"},
    {0x07, "RAM"},
    {0x08, "ROM"},
    {0x09, "FLASH"},
    {0x0A, "EEPROM"},
    {0x0B, "FEPROM"},
    {0x0C, "EPROM"},
    {0x0D, "CDRAM"},
    {0x0E, "3DRAM"},
    {0x0F, "SDRAM"},
    {0x10, "SGRAM"},
    {0x11, "RDRAM"},
    {0x12, "DDR"},
    {0x13, "DDR2"},
    {0x14, "DDR2 FB-DIMM"},
    {0x18, "DDR3"},
    {0x19, "FBD2"},
    {0x1A, "DDR4"},
    {0x1B, "LPDDR"},
    {0x1C, "LPDDR2"},
    {0x1D, "LPDDR3"},
    {0x1E, "LPDDR4"},
    {0x1F, "Logical non-volatile device"},
    {0x20, "HBM"},
    {0x21, "HBM2"},
    {0x22, "DDR5"},
    {0x23, "LPDDR5"},
    {0x24, "HBM3"},
};
// clang-format on

template <std::size_t Count>
std::string_view find(const Name (&names)[Count], unsigned number) {
  const Name* found = std::lower_bound(
      std::begin(names), std::end(names), number,
      [](const Name& name, unsigned value) { return name.number < value; });
  if (found == std::end(names) || found->number != number) {
    return {};
  }
  return found->text;
}

}  // namespace

std::string_view processorFamilyName(unsigned family) {
  return find(kProcessorFamilies, family);
}

std::string_view memoryTypeName(unsigned type) {
  return find(kMemoryTypes, type);
}

}  // namespace local
