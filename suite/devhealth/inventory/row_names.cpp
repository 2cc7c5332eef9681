#include "suite/devhealth/inventory/row_names.h"

#include <cstddef>
#include <map>
#include <utility>

namespace devhealth {
namespace {

using Counts = std::map<std::string, std::size_t>;

Counts countsOf(const std::vector<std::string>& names) {
  Counts counts;
  for (const std::string& name : names) {
    ++counts[name];
  }
  return counts;
}

}  // namespace

std::vector<std::string> distinctNames(const std::vector<RowName>& rows,
                                       std::string_view classWord) {
  std::vector<std::string> names;
  names.reserve(rows.size());
  for (const RowName& row : rows) {
    names.push_back(!row.name.empty()    ? row.name
                    : !row.place.empty() ? row.place
                                         : std::string(classWord));
  }
  const Counts named = countsOf(names);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (named.at(names[i]) > 1 && !rows[i].place.empty() &&
        rows[i].place != names[i]) {
      names[i] += " " + rows[i].place;
    }
  }
  Counts taken = countsOf(names);
  const Counts placed = taken;
  std::map<std::string, unsigned> last;
  for (std::string& name : names) {
    if (placed.at(name) == 1) {
      continue;
    }
    std::string numbered;
    do {
      numbered = name + " " + std::to_string(++last[name]);
    } while (taken[numbered]++ != 0);
    name = std::move(numbered);
  }
  return names;
}

}  // namespace devhealth
