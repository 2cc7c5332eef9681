#include <windows.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <ios>

#include "suite/brivel/modules/library_file.h"

namespace brivel {
namespace {

constexpr WORD kMachine = IMAGE_FILE_MACHINE_AMD64;

template <typename Record>
bool readAt(std::istream& stream, std::uint64_t offset, Record& record) {
  stream.clear();
  stream.seekg(static_cast<std::streamoff>(offset));
  return static_cast<bool>(
      stream.read(reinterpret_cast<char*>(&record), sizeof record));
}

// Whether all sections lie in the file.
bool isWhole(std::istream& stream, std::uint64_t sections,
             const IMAGE_FILE_HEADER& header, std::uint64_t fileSize) {
  for (std::uint64_t index = 0; index < header.NumberOfSections; ++index) {
    IMAGE_SECTION_HEADER section = {};
    if (!readAt(stream, sections + index * sizeof section, section) ||
        section.PointerToRawData > fileSize ||
        section.SizeOfRawData > fileSize - section.PointerToRawData) {
      return false;
    }
  }
  return true;
}

}  // namespace

std::string problemWithLibrary(const std::string& file) {
  std::ifstream stream(std::filesystem::u8path(file),
                       std::ios::binary | std::ios::ate);
  if (!stream) {
    return std::string("it cannot be read: ") + std::strerror(errno);
  }
  const std::streamoff end = stream.tellg();
  const std::uint64_t fileSize = end < 0 ? 0 : static_cast<std::uint64_t>(end);
  IMAGE_DOS_HEADER dos = {};
  if (!readAt(stream, 0, dos)) {
    return dos.e_magic == IMAGE_DOS_SIGNATURE ? "it is truncated"
                                              : "it is no library";
  }
  if (dos.e_magic != IMAGE_DOS_SIGNATURE || dos.e_lfanew < 0) {
    return "it is no library";
  }
  struct {
    DWORD signature;
    IMAGE_FILE_HEADER file;
  } header = {};
  const auto start = static_cast<std::uint64_t>(dos.e_lfanew);
  if (!readAt(stream, start, header)) {
    return "it is truncated";
  }
  if (header.signature != IMAGE_NT_SIGNATURE) {
    return "it is no library";
  }
  if (header.file.Machine != kMachine) {
    return "it is made for another kind of machine";
  }
  if ((header.file.Characteristics & IMAGE_FILE_DLL) == 0) {
    return "it is no shared library";
  }
  const std::uint64_t sections =
      start + sizeof header + header.file.SizeOfOptionalHeader;
  return isWhole(stream, sections, header.file, fileSize) ? ""
                                                          : "it is truncated";
}

std::string loadError(const std::error_code& failure) {
  return failure.message();
}

}  // namespace brivel
