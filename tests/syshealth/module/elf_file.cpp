#include "tests/syshealth/module/elf_file.h"

#include <elf.h>
#include <link.h>

#include <cstring>
#include <stdexcept>

#include "tests/support/file_text.h"

namespace {

using Header = ElfW(Ehdr);
using Section = ElfW(Shdr);
using Symbol = ElfW(Sym);
using Entry = ElfW(Dyn);
using Version = ElfW(Half);

// The bytes of the file, and tables within them.
class Image {
 public:
  explicit Image(const std::string& path) {
    bytes_ = support::fileText(path);
    const auto header = table<Header>(0, sizeof(Header)).at(0);
    if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0) {
      throw std::runtime_error(path + " is no library");
    }
    sections_ =
        table<Section>(header.e_shoff, header.e_shnum * sizeof(Section));
  }

  // The section of a type, which every shared library has once.
  const Section& section(unsigned int type) const {
    for (const Section& candidate : sections_) {
      if (candidate.sh_type == type) {
        return candidate;
      }
    }
    throw std::runtime_error("a section is missing");
  }

  template <typename Row>
  std::vector<Row> rows(const Section& section) const {
    return table<Row>(section.sh_offset, section.sh_size);
  }

  // A name in the string table that goes with a section.
  std::string name(const Section& section, std::size_t offset) const {
    return bytes_.data() + sections_.at(section.sh_link).sh_offset + offset;
  }

 private:
  template <typename Row>
  std::vector<Row> table(std::size_t offset, std::size_t size) const {
    if (offset > bytes_.size() || size > bytes_.size() - offset) {
      throw std::runtime_error("the file is cut short");
    }
    std::vector<Row> table(size / sizeof(Row));
    std::memcpy(table.data(), bytes_.data() + offset,
                table.size() * sizeof(Row));
    return table;
  }

  std::string bytes_;
  std::vector<Section> sections_;
};

void readSymbols(const Image& image, ElfFile& file) {
  constexpr Version kNoVersion = 1;  // 0 local, 1 global without a version.
  const Section& section = image.section(SHT_DYNSYM);
  const auto symbols = image.rows<Symbol>(section);
  const auto versions = image.rows<Version>(image.section(SHT_GNU_versym));
  for (std::size_t i = 1; i < symbols.size(); ++i) {
    const std::string name = image.name(section, symbols[i].st_name);
    const auto binding = ELF64_ST_BIND(symbols[i].st_info);
    if (symbols[i].st_shndx != SHN_UNDEF) {
      if (binding != STB_LOCAL) {
        file.exports.push_back(name);
      }
    } else if (binding == STB_GLOBAL && versions.at(i) <= kNoVersion) {
      file.imports.push_back(name);
    }
  }
}

void readDynamicEntries(const Image& image, ElfFile& file) {
  const Section& section = image.section(SHT_DYNAMIC);
  for (const Entry& entry : image.rows<Entry>(section)) {
    if (entry.d_tag == DT_RUNPATH) {
      file.runPath = image.name(section, entry.d_un.d_val);
    } else if (entry.d_tag == DT_SYMBOLIC ||
               (entry.d_tag == DT_FLAGS &&
                (entry.d_un.d_val & DF_SYMBOLIC) != 0)) {
      file.symbolic = true;
    }
  }
}

}  // namespace

ElfFile readElfFile(const std::string& path) {
  const Image image(path);
  ElfFile file;
  readSymbols(image, file);
  readDynamicEntries(image, file);
  return file;
}
