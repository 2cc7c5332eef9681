#include <dlfcn.h>
#include <elf.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <ios>

#include "suite/brivel/modules/library_file.h"

namespace brivel {
namespace {

// The kind of file that this program itself is.
#if defined(__x86_64__)
constexpr std::uint16_t kMachine = EM_X86_64;
#elif defined(__aarch64__)
constexpr std::uint16_t kMachine = EM_AARCH64;
#else
#error "name this machine's ELF type"
#endif

// Whether `count` entries of `size` bytes from `offset` on lie in the file.
bool fits(std::uint64_t offset, std::uint64_t count, std::uint64_t size,
          std::uint64_t fileSize) {
  return offset <= fileSize &&
         (size == 0 || count <= (fileSize - offset) / size);
}

template <typename Record>
bool readAt(std::istream& stream, std::uint64_t offset, Record& record) {
  stream.seekg(static_cast<std::streamoff>(offset));
  return static_cast<bool>(
      stream.read(reinterpret_cast<char*>(&record), sizeof record));
}

// Whether all parts of the library that are loaded, and its table of
// sections, lie in the file.
bool isWhole(std::istream& stream, const Elf64_Ehdr& header,
             std::uint64_t fileSize) {
  if (!fits(header.e_phoff, header.e_phnum, header.e_phentsize, fileSize) ||
      !fits(header.e_shoff, header.e_shnum, header.e_shentsize, fileSize) ||
      header.e_phentsize != sizeof(Elf64_Phdr)) {
    return false;
  }
  for (std::uint64_t index = 0; index < header.e_phnum; ++index) {
    Elf64_Phdr segment = {};
    if (!readAt(stream, header.e_phoff + index * sizeof segment, segment) ||
        !fits(segment.p_offset, 1, segment.p_filesz, fileSize)) {
      return false;
    }
  }
  return true;
}

}  // namespace

std::string problemWithLibrary(const std::string& file) {
  std::ifstream stream(file, std::ios::binary | std::ios::ate);
  if (!stream) {
    return std::string("it cannot be read: ") + std::strerror(errno);
  }
  const std::streamoff end = stream.tellg();
  const std::uint64_t fileSize = end < 0 ? 0 : static_cast<std::uint64_t>(end);
  Elf64_Ehdr header = {};
  stream.seekg(0);
  stream.read(reinterpret_cast<char*>(&header), sizeof header);
  const auto got = static_cast<std::size_t>(stream.gcount());
  if (got < SELFMAG || std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0) {
    return "it is no library";
  }
  if (got < sizeof header) {
    return "it is truncated";
  }
  if (header.e_ident[EI_CLASS] != ELFCLASS64 ||
      header.e_ident[EI_DATA] != ELFDATA2LSB || header.e_machine != kMachine) {
    return "it is made for another kind of machine";
  }
  if (header.e_type != ET_DYN) {
    return "it is no shared library";
  }
  return isWhole(stream, header, fileSize) ? "" : "it is truncated";
}

std::string loadError(const std::error_code& failure) {
  const char* const reason = dlerror();
  return reason == nullptr ? failure.message() : reason;
}

}  // namespace brivel
