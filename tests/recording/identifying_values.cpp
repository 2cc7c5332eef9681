#include "tests/recording/identifying_values.h"

#include <algorithm>
#include <regex>

#include "suite/base/ascii.h"
#include "suite/base/filler.h"
#include "tests/support/file_text.h"

namespace recording {
namespace {

namespace fs = std::filesystem;

bool isWholeWord(const std::string& text, std::size_t begin,
                 std::size_t length) {
  const auto isPart = [&text](std::size_t at) {
    return at < text.size() && base::isAlphanumeric(text[at]);
  };
  return (begin == 0 || !isPart(begin - 1)) && !isPart(begin + length);
}

// Where a value stands in a text as a word of its own.
std::vector<std::size_t> placesOf(const std::string& text,
                                  const std::string& value) {
  std::vector<std::size_t> places;
  for (std::size_t at = text.find(value); at != std::string::npos;
       at = text.find(value, at + 1)) {
    if (isWholeWord(text, at, value.size())) {
      places.push_back(at);
    }
  }
  return places;
}

}  // namespace

std::set<std::string> identifyingValues(const fs::path& tree) {
  const std::regex member(
      R"re("(SerialNumber|AssetTag|ServiceTag|UUID|MACAddress|HostName|FQDN|)re"
      R"re(PermanentMACAddress|DurableName|UserName|ServiceEntryPointUUID)")re"
      R"re(\s*:\s*"?([^",\\\]}]+))re");
  std::set<std::string> values;
  for (const auto& entry : fs::recursive_directory_iterator(tree)) {
    if (entry.path().filename() != "index.json") {
      continue;
    }
    const std::string text = support::fileText(entry.path());
    for (std::sregex_iterator found(text.begin(), text.end(), member), end;
         found != end; ++found) {
      const std::string value(base::trimmed((*found)[2].str()));
      // A placeholder may be the member's own name, as in "username".
      if (!base::isFiller(value) &&
          !base::equalIgnoringCase(value, (*found)[1].str()) &&
          value.find('/') == std::string::npos &&
          value.find_first_not_of("0-") != std::string::npos) {
        values.insert(base::lowerCase(value));
      }
    }
  }
  return values;
}

std::set<std::string> distinctValues(const std::set<std::string>& values) {
  std::set<std::string> distinct;
  std::copy_if(values.begin(), values.end(),
               std::inserter(distinct, distinct.end()),
               [](const std::string& value) {
                 const bool number =
                     std::all_of(value.begin(), value.end(), base::isDigit);
                 return value.size() >= (number ? 6U : 4U);
               });
  return distinct;
}

std::set<std::string> foundBelow(const fs::path& folder,
                                 const std::set<std::string>& values) {
  std::set<std::string> found;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    const std::string name =
        fs::relative(entry.path(), folder).generic_string();
    const std::string text = base::lowerCase(
        name + "\n" +
        (entry.is_regular_file() ? support::fileText(entry.path()) : ""));
    for (const std::string& value : values) {
      if (!placesOf(text, value).empty()) {
        found.insert(value + " in " + name);
      }
    }
  }
  return found;
}

std::string withoutValues(const std::string& report,
                          const std::string& original,
                          const std::set<std::string>& values) {
  std::string starred = base::lowerCase(report);
  const std::string text = base::lowerCase(original);
  for (const std::string& value : values) {
    for (const std::size_t place : placesOf(text, value)) {
      for (std::size_t i = place;
           i < std::min(place + value.size(), starred.size()); ++i) {
        starred[i] = '*';
      }
    }
  }
  return starred;
}

}  // namespace recording
