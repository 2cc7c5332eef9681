#include "suite/masking/noted_values.h"

#include <algorithm>
#include <utility>

#include "suite/base/ascii.h"
#include "suite/base/time_limit.h"

namespace masking {
namespace {

// Stands where a word begins or ends. Capital letters do not occur otherwise.
constexpr char kEdge = 'A';

// Whether a word begins or ends at a place of a text.
bool isEdge(std::string_view text, std::size_t place) {
  return place == 0 || place == text.size() ||
         !base::isAlphanumeric(text[place - 1]) ||
         !base::isAlphanumeric(text[place]);
}

std::uint8_t lengthOf(std::string_view value) {
  return static_cast<std::uint8_t>(
      value.size() -
      static_cast<std::size_t>(std::count(value.begin(), value.end(), kEdge)));
}

}  // namespace

bool NotedValues::add(std::string_view value, bool anywhere) {
  if (value.empty() || value.size() > kLongest) {
    return false;
  }
  std::string backwards;
  for (std::size_t place = value.size() + 1; place-- > 0;) {
    const bool inside = place > 0 && place < value.size();
    if (isEdge(value, place) && (inside || !anywhere)) {
      backwards += kEdge;
    }
    if (place > 0) {
      backwards += base::lower(value[place - 1]);
    }
  }
  values_.push_back(std::move(backwards));
  return true;
}

void NotedValues::prepare() {
  std::vector<std::string> values = std::exchange(values_, {});
  std::sort(values.begin(), values.end());
  values.erase(std::unique(values.begin(), values.end()), values.end());
  nodes_.assign(1, Node());
  // Which values begin with what each node of a depth stands for.
  using Range = std::pair<std::uint32_t, std::uint32_t>;
  std::vector<Range> level = {{0, static_cast<std::uint32_t>(values.size())}};
  std::uint32_t node = 0;
  for (std::size_t depth = 0; !level.empty(); ++depth) {
    std::vector<Range> next;
    for (const auto& [first, end] : level) {
      nodes_[node].children = static_cast<std::uint32_t>(nodes_.size());
      for (std::uint32_t at = first; at < end;) {
        base::heedTime();
        if (values[at].size() == depth) {
          ++at;
          continue;
        }
        Node made;
        made.label = values[at][depth];
        if (values[at].size() == depth + 1) {
          made.length = lengthOf(values[at]);
        }
        const std::uint32_t begin = at;
        while (at < end && values[at][depth] == made.label) {
          base::heedTime();
          ++at;
        }
        if (node != 0) {
          made.shorter = step(nodes_[node].shorter, made.label);
        }
        made.length = std::max(made.length, nodes_[made.shorter].length);
        nodes_.push_back(made);
        next.emplace_back(begin, at);
      }
      ++node;
    }
    level = std::move(next);
  }
}

std::vector<std::uint8_t> NotedValues::lengths(std::string_view text,
                                               std::size_t begin,
                                               std::size_t end) const {
  std::vector<std::uint8_t> found(end - begin);
  if (nodes_.size() == 1) {
    return found;
  }
  std::uint32_t node = 0;
  for (std::size_t place = std::min(text.size(), end + kLongest);; --place) {
    const std::uint32_t inside = node;
    if (isEdge(text, place)) {
      node = step(node, kEdge);
    }
    if (place < end) {
      found[place - begin] =
          std::max(nodes_[inside].length, nodes_[node].length);
    }
    if (place == begin) {
      return found;
    }
    node = step(node, base::lower(text[place - 1]));
  }
}

// The child of a node with a label; 0 if it has none. The children of the next
// node are known, or those of this one are the last.
std::uint32_t NotedValues::child(std::uint32_t node, char label) const {
  const auto begin = nodes_.begin() + nodes_[node].children;
  const auto end = node + 1 < nodes_.size() && nodes_[node + 1].children != 0
                       ? nodes_.begin() + nodes_[node + 1].children
                       : nodes_.end();
  const auto found =
      std::lower_bound(begin, end, label, [](const Node& entry, char wanted) {
        return static_cast<unsigned char>(entry.label) <
               static_cast<unsigned char>(wanted);
      });
  return found == end || found->label != label
             ? 0
             : static_cast<std::uint32_t>(found - nodes_.begin());
}

// The longest end of a node and a character behind it that is a node.
std::uint32_t NotedValues::step(std::uint32_t node, char label) const {
  while (true) {
    base::heedTime();
    const std::uint32_t next = child(node, label);
    if (next != 0 || node == 0) {
      return next;
    }
    node = nodes_[node].shorter;
  }
}

}  // namespace masking
