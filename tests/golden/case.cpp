#include "tests/golden/case.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

#include "tests/golden/text_file.h"
#include "tests/support/file_text.h"

namespace golden {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kArguments = "args";

std::string nameOf(const Case& theCase) {
  std::string name =
      fs::relative(theCase.folder, theCase.root).generic_string();
  const std::string file = theCase.arguments.filename().string();
  if (file.size() > kArguments.size()) {
    name += "/" + file.substr(kArguments.size() + 1);
  }
  if (!theCase.variant.empty()) {
    name += "/" + theCase.variant;
  }
  std::replace(name.begin(), name.end(), '-', '_');
  std::replace(name.begin(), name.end(), ' ', '_');
  return name;
}

// Reads a line "NAME | MARK=text | MARK=text".
void readVariant(std::string_view line, Case& theCase) {
  constexpr std::string_view kBetween = " | ";
  bool named = false;
  while (!line.empty()) {
    const auto end = line.find(kBetween);
    const std::string word(line.substr(0, end));
    line.remove_prefix(end == line.npos ? line.size() : end + kBetween.size());
    const auto equals = word.find('=');
    if (!named) {
      theCase.variant = word;
      named = true;
    } else if (equals == std::string::npos) {
      throw std::runtime_error(theCase.folder.string() +
                               "/variants: no MARK=text: " + word);
    } else {
      theCase.values.emplace_back("@" + word.substr(0, equals) + "@",
                                  word.substr(equals + 1));
    }
  }
}

}  // namespace

fs::path Case::file(const std::string& fileName) const {
  if (!variant.empty()) {
    const fs::path own = folder / (fileName + "-" + variant);
    if (fs::exists(own)) {
      return own;
    }
  }
  return folder / fileName;
}

fs::path Case::inherited(const std::string& fileName) const {
  fs::path found = file(fileName);
  for (fs::path at = folder; !fs::is_regular_file(found) && at != root;) {
    at = at.parent_path();
    found = at / fileName;
  }
  return fs::is_regular_file(found) ? found : folder / fileName;
}

std::string Case::filled(std::string text) const {
  for (const auto& [mark, value] : values) {
    text = replaceAll(std::move(text), mark, value);
  }
  return text;
}

std::vector<Case> findCases(const fs::path& root) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    const std::string file = entry.path().filename().string();
    if (entry.is_regular_file() &&
        (file == kArguments || file.rfind("args-", 0) == 0)) {
      files.push_back(entry.path());
    }
  }
  std::sort(files.begin(), files.end());
  std::vector<Case> cases;
  for (const fs::path& file : files) {
    Case found;
    found.root = root;
    found.folder = file.parent_path();
    found.arguments = file;
    const auto variants = linesOf(support::fileText(found.folder / "variants"));
    const bool first = cases.empty() || cases.back().folder != found.folder;
    for (std::size_t i = 0; i < std::max<std::size_t>(variants.size(), 1);
         ++i) {
      Case one = found;
      if (!variants.empty()) {
        readVariant(variants[i], one);
      }
      one.name = nameOf(one);
      one.first = first && i == 0;
      cases.push_back(std::move(one));
    }
  }
  return cases;
}

}  // namespace golden
