#include "tests/suite/local/table_builder.h"

namespace local {
namespace {

void put(std::string& bytes, std::size_t offset, std::uint32_t value,
         std::size_t width) {
  for (std::size_t i = 0; i < width; ++i) {
    bytes.at(offset + i) = static_cast<char>(value >> (8U * i) & 0xFFU);
  }
}

void setChecksum(std::string& bytes, std::size_t offset) {
  unsigned sum = 0;
  for (const char byte : bytes) {
    sum += static_cast<unsigned char>(byte);
  }
  put(bytes, offset, 0x100U - (sum & 0xFFU), 1);
}

}  // namespace

Structure::Structure(std::uint8_t type, std::size_t length)
    : formatted_(length, '\0') {
  put(formatted_, 0, type, 1);
  put(formatted_, 1, static_cast<std::uint32_t>(length), 1);
}

Structure& Structure::byte(std::size_t offset, unsigned value) {
  put(formatted_, offset, value, 1);
  return *this;
}

Structure& Structure::word(std::size_t offset, unsigned value) {
  put(formatted_, offset, value, 2);
  return *this;
}

Structure& Structure::dword(std::size_t offset, std::uint32_t value) {
  put(formatted_, offset, value, 4);
  return *this;
}

Structure& Structure::bytes(std::size_t offset, const std::string& value) {
  formatted_.replace(offset, value.size(), value);
  return *this;
}

Structure& Structure::text(std::size_t offset, const std::string& value) {
  texts_.push_back(value);
  return byte(offset, static_cast<unsigned>(texts_.size()));
}

std::string Structure::build(std::uint16_t handle) const {
  std::string bytes = formatted_;
  put(bytes, 2, handle, 2);
  for (const std::string& text : texts_) {
    bytes += text + '\0';
  }
  if (texts_.empty()) {
    bytes += '\0';
  }
  return bytes + '\0';
}

std::string tableOf(const std::vector<Structure>& structures) {
  std::string bytes;
  std::uint16_t handle = 0;
  for (const Structure& structure : structures) {
    bytes += structure.build(handle++);
  }
  return bytes + Structure(127, 4).build(handle);
}

std::string entryPoint32(unsigned major, unsigned minor, std::size_t length,
                         std::size_t count) {
  std::string bytes(0x1F, '\0');
  bytes.replace(0, 4, "_SM_");
  put(bytes, 0x05, 0x1F, 1);
  put(bytes, 0x06, major, 1);
  put(bytes, 0x07, minor, 1);
  bytes.replace(0x10, 5, "_DMI_");
  put(bytes, 0x16, static_cast<std::uint32_t>(length), 2);
  put(bytes, 0x1C, static_cast<std::uint32_t>(count), 2);
  setChecksum(bytes, 0x04);
  return bytes;
}

std::string entryPoint64(unsigned major, unsigned minor, std::size_t length) {
  std::string bytes(0x18, '\0');
  bytes.replace(0, 5, "_SM3_");
  put(bytes, 0x06, 0x18, 1);
  put(bytes, 0x07, major, 1);
  put(bytes, 0x08, minor, 1);
  put(bytes, 0x0C, static_cast<std::uint32_t>(length), 4);
  setChecksum(bytes, 0x05);
  return bytes;
}

ParsedTable::ParsedTable(const std::vector<Structure>& structures,
                         unsigned major, unsigned minor)
    : bytes(tableOf(structures)) {
  const std::string entry = entryPoint64(major, minor, bytes.size());
  tables = parseSmbios(parseSmbiosEntry(base::ByteView(entry)),
                       base::ByteView(bytes));
}

}  // namespace local
