#include "suite/brivel/options/fold.h"

#include <sstream>
#include <utility>

namespace brivel {

std::string folded(std::string firstLine, std::string_view text,
                   std::size_t indent, std::size_t width) {
  std::string line = std::move(firstLine);
  std::string lines;
  std::istringstream words{std::string(text)};
  bool begun = false;
  for (std::string word; words >> word; begun = true) {
    if (begun && line.size() + 1 + word.size() > width) {
      lines += line + "\n";
      line.assign(indent, ' ');
      begun = false;
    }
    line += (begun ? " " : "") + word;
  }
  return lines + line + "\n";
}

}  // namespace brivel
