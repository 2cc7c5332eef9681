#include "suite/redfish/graph/json_limits.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

namespace redfish {
namespace {

// The place of the quote that ends a string whose text starts at `begin`; the
// size of the text if there is none.
std::size_t endOfString(std::string_view text, std::size_t begin) {
  while (true) {
    const std::size_t stop = text.find_first_of("\"\\", begin);
    if (stop == std::string_view::npos) {
      return text.size();
    }
    if (text[stop] == '"') {
      return stop;
    }
    begin = stop + 2;
    if (begin >= text.size()) {
      return text.size();
    }
  }
}

// Counts the values and, for each object or array that is open, its entries.
class Counter {
 public:
  void open(bool object) {
    if (depth_ < levels_.size()) {
      levels_[depth_] = {object, 1};
    }
    ++depth_;
    ++values_;
  }

  void close() {
    if (depth_ > 0) {
      --depth_;
    }
  }

  void separate() {
    ++values_;
    if (depth_ == 0 || depth_ > levels_.size()) {
      return;
    }
    Level& level = levels_[depth_ - 1];
    ++level.entries;
    tooManyMembers_ =
        tooManyMembers_ || (level.object && level.entries > kMaxJsonMembers);
  }

  std::size_t values() const { return values_; }
  bool tooManyValues() const { return values_ > kMaxJsonValues; }
  bool tooManyMembers() const { return tooManyMembers_; }

 private:
  struct Level {
    bool object;
    std::size_t entries;
  };
  std::array<Level, kMaxJsonDepth> levels_{};
  std::size_t depth_ = 0;
  std::size_t values_ = 0;
  bool tooManyMembers_ = false;
};

}  // namespace

base::Result<std::size_t> countJsonValues(std::string_view text) {
  // Each value and each member takes a byte at least. Strings are not told
  // apart here: a comma in one counts as a value.
  if (text.size() <= kMaxJsonMembers) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(),
                      [](char c) { return c == ',' || c == '{' || c == '['; }));
  }
  Counter counter;
  for (std::size_t index = 0; index < text.size(); ++index) {
    switch (text[index]) {
      case '"':
        index = endOfString(text, index + 1);
        break;
      case '{':
      case '[':
        counter.open(text[index] == '{');
        break;
      case '}':
      case ']':
        counter.close();
        break;
      case ',':
        counter.separate();
        break;
      default:
        break;
    }
    if (counter.tooManyMembers()) {
      return base::makeFailure(base::FailureKind::kBadContent,
                               "a JSON object has more than " +
                                   std::to_string(kMaxJsonMembers) +
                                   " members");
    }
    if (counter.tooManyValues()) {
      return base::makeFailure(base::FailureKind::kBadContent,
                               "the JSON has more than " +
                                   std::to_string(kMaxJsonValues) + " values");
    }
  }
  return counter.values();
}

}  // namespace redfish
