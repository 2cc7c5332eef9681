#include "tests/syshealth/module/pe_file.h"

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <vector>

#include "tests/support/file_text.h"

namespace {

// The bytes of the file, by the addresses at which they are loaded.
class Image {
 public:
  explicit Image(const std::string& path) {
    bytes_ = support::fileText(path);
    const auto dos = at<IMAGE_DOS_HEADER>(0);
    if (dos.e_magic != IMAGE_DOS_SIGNATURE) {
      throw std::runtime_error(path + " is no library");
    }
    const auto start = static_cast<std::size_t>(dos.e_lfanew);
    headers_ = at<IMAGE_NT_HEADERS64>(start);
    for (std::size_t i = 0; i < headers_.FileHeader.NumberOfSections; ++i) {
      sections_.push_back(at<IMAGE_SECTION_HEADER>(
          start + sizeof(headers_) + i * sizeof(IMAGE_SECTION_HEADER)));
    }
  }

  // The address of one of the tables that the header names; 0: none.
  std::size_t directory(std::size_t index) const {
    return headers_.OptionalHeader.DataDirectory[index].VirtualAddress;
  }

  template <typename Record>
  Record read(std::size_t address) const {
    return at<Record>(offsetOf(address));
  }

  std::string text(std::size_t address) const {
    return bytes_.c_str() + offsetOf(address);
  }

 private:
  template <typename Record>
  Record at(std::size_t offset) const {
    if (offset > bytes_.size() || sizeof(Record) > bytes_.size() - offset) {
      throw std::runtime_error("the file is cut short");
    }
    Record record;
    std::memcpy(&record, bytes_.data() + offset, sizeof(record));
    return record;
  }

  std::size_t offsetOf(std::size_t address) const {
    for (const IMAGE_SECTION_HEADER& section : sections_) {
      const std::size_t begin = section.VirtualAddress;
      if (address >= begin && address - begin < section.SizeOfRawData) {
        return address - begin + section.PointerToRawData;
      }
    }
    throw std::runtime_error("an address lies outside the file");
  }

  std::string bytes_;
  IMAGE_NT_HEADERS64 headers_{};
  std::vector<IMAGE_SECTION_HEADER> sections_;
};

std::set<std::string> exportsOf(const Image& image) {
  std::set<std::string> names;
  const std::size_t table = image.directory(IMAGE_DIRECTORY_ENTRY_EXPORT);
  if (table == 0) {
    return names;
  }
  const auto exports = image.read<IMAGE_EXPORT_DIRECTORY>(table);
  for (std::size_t i = 0; i < exports.NumberOfNames; ++i) {
    names.insert(image.text(image.read<std::uint32_t>(
        exports.AddressOfNames + i * sizeof(std::uint32_t))));
  }
  return names;
}

std::set<std::string> namesImported(const Image& image, std::size_t table) {
  std::set<std::string> names;
  while (const auto entry = image.read<std::uint64_t>(table)) {
    names.insert((entry & IMAGE_ORDINAL_FLAG64) != 0
                     ? "#" + std::to_string(IMAGE_ORDINAL64(entry))
                     // The name follows a hint of two bytes.
                     : image.text(static_cast<std::size_t>(entry) + 2));
    table += sizeof(entry);
  }
  return names;
}

}  // namespace

PeFile readPeFile(const std::string& path) {
  const Image image(path);
  PeFile file;
  file.exports = exportsOf(image);
  std::size_t table = image.directory(IMAGE_DIRECTORY_ENTRY_IMPORT);
  while (table != 0) {
    const auto library = image.read<IMAGE_IMPORT_DESCRIPTOR>(table);
    if (library.Name == 0) {
      break;
    }
    file.imports[image.text(library.Name)] =
        namesImported(image, library.OriginalFirstThunk);
    table += sizeof(library);
  }
  return file;
}
