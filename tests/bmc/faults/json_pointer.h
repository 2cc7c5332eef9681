#pragma once

#include <boost/json/value.hpp>
#include <string_view>

namespace bmc {

/// Sets what a JSON pointer (RFC 6901) leads to. Objects are made where a step
/// is missing or no container; "-" adds to the end of an array. False when an
/// array has no such place, or the pointer is none.
bool setAt(boost::json::value& root, std::string_view pointer,
           const boost::json::value& value);

/// Removes what a JSON pointer leads to, if it is there. False when it is not.
bool removeAt(boost::json::value& root, std::string_view pointer);

}  // namespace bmc
