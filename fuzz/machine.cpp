// The folder of a recorded machine. An input is a row of files, each a line
// "@PATH" ("@-> PATH" for a symbolic link) and its bytes up to the next such
// line.
#include "suite/local/machine.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>

#include "fuzz/answers.h"
#include "fuzz/budget.h"
#include "fuzz/require.h"
#include "suite/base/ascii.h"
#include "suite/base/text.h"
#include "suite/devhealth/inventory/local_inventory.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostFiles = 64;
constexpr std::size_t kLongestPath = 200;

// A folder of this process, in memory where the system has that.
fs::path workFolder() {
  std::error_code error;
  const fs::path memory = "/dev/shm";
  const fs::path parent =
      fs::is_directory(memory, error) ? memory : fs::temp_directory_path();
  return parent / ("brivel-fuzz-" + std::to_string(::getpid()));
}

bool isSafe(const fs::path& path) {
  return !path.empty() && path.is_relative() &&
         std::none_of(path.begin(), path.end(),
                      [](const fs::path& name) { return name == ".."; });
}

// Writes the files of an input; what cannot be written is left out.
void lay(std::string_view input, const fs::path& folder) {
  std::size_t files = 0;
  forEachPart(input, [&](std::string_view head, std::string_view body) {
    constexpr std::string_view kLink = "-> ";
    const bool link = base::startsWith(head, kLink);
    const fs::path path(head.substr(link ? kLink.size() : 0));
    std::error_code error;
    if (head.size() > kLongestPath || ++files > kMostFiles || !isSafe(path) ||
        head.find('\0') != std::string_view::npos) {
      return;
    }
    const fs::path file = folder / path;
    // Through a link that an earlier part made nothing is written.
    const fs::path real = fs::weakly_canonical(file.parent_path(), error);
    if (error ||
        std::mismatch(folder.begin(), folder.end(), real.begin(), real.end())
                .first != folder.end()) {
      return;
    }
    fs::create_directories(real, error);
    if (link) {
      const std::string_view target = body.substr(0, body.find('\n'));
      fs::create_symlink(fs::path(target), file, error);
    } else if (!fs::is_symlink(file, error)) {
      std::ofstream(file, std::ios::binary) << body;
    }
  });
}

void checkText(const std::string& text) {
  require(base::cleanText(text) == text);
}

void readAll(local::Machine& machine) {
  const auto system = devhealth::systemOf(machine.system(), machine.board());
  checkText(system.name);
  checkText(system.typeModel);
  checkText(system.serialNumber);
  for (const auto& part : devhealth::processorsOf(machine.processors())) {
    checkText(part.name);
    checkText(part.model);
  }
  for (const auto& part : devhealth::dimmsOf(machine.memory())) {
    checkText(part.slot);
    checkText(part.serialNumber);
  }
  for (const auto& part : devhealth::powersOf(machine.supplies())) {
    checkText(part.name);
  }
  for (const auto& part : devhealth::fansOf(machine.fans())) {
    checkText(part.name);
  }
  for (const auto& part : devhealth::pciAdaptersOf(machine.adapters())) {
    checkText(part.name);
    checkText(part.model);
    checkText(part.serialNumber);
  }
  machine.hostInterfaces();
  machine.describesItself();
  for (const std::string& defect : machine.defects()) {
    require(!defect.empty());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data,
                                      std::size_t size) {
  const StepBudget budget(5000, 100, size);
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  static const fs::path kFolder = workFolder();
  std::error_code error;
  fs::create_directory(kFolder, error);
  lay(input, kFolder);
  {
    local::Machine machine{local::Root(kFolder.string())};
    readAll(machine);
  }
  fs::remove_all(kFolder, error);
  return 0;
}
