#pragma once

#include <boost/system/result.hpp>

#include "suite/base/failure.h"

namespace base {

/// A value, or the failure that prevented it. Access the value only after
/// `has_value()` (or `if (result)`); the reason is in `error()`.
template <typename Value>
using Result = boost::system::result<Value, Failure>;

/// Lets a failure be a result's error: throws std::logic_error, because access
/// to the value of a failed result is an error in the program.
[[noreturn]] void throw_exception_from_error(
    const Failure& failure, const boost::source_location& place);

}  // namespace base
