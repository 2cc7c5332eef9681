#pragma once

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/value.hpp>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tests/bmc/faults/number_range.h"

namespace bmc {

/// Takes an object of a fault file apart, and insists that it holds nothing
/// else: a misspelt name would be a test that tests nothing. The first thing
/// that is wrong goes to `error`, with the place; later calls answer as they
/// can.
class ObjectReader {
 public:
  /// `where` is the place of the value in the file, such as "rules/2".
  ObjectReader(const boost::json::value& value, std::string where,
               std::string& error);

  // A member of a kind; nothing when it is not there. A member of another
  // kind is an error.
  std::optional<std::string> text(const char* name);
  std::optional<std::uint64_t> number(const char* name);
  bool flag(const char* name);
  NumberRange range(const char* name);
  const boost::json::value* any(const char* name);
  const boost::json::object* object(const char* name);
  const boost::json::array* array(const char* name);

  /// One of some words, as its place in the list.
  std::optional<std::size_t> word(const char* name,
                                  const std::vector<std::string>& words);

  /// Calls `take` for each entry of an array, with the entry's place.
  void each(const char* name,
            const std::function<void(const boost::json::value& entry,
                                     const std::string& place)>& take);

  /// The place of a member.
  std::string place(const char* name) const;

  /// Says that something is wrong with a member.
  void complain(const char* name, const std::string& what);

  /// Where the first complaint goes.
  std::string& error() { return error_; }

  /// To be called last: complains of members that were not asked for.
  void finish();

 private:
  boost::json::object empty_;
  const boost::json::object* object_;
  std::string where_;
  std::string& error_;
  std::set<std::string> known_;
};

}  // namespace bmc
