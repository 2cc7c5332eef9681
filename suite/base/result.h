#pragma once

#include <boost/system/result.hpp>

#include "suite/base/failure.h"

namespace base {

/// A value, or the failure because of which there is none. Ask for the value
/// only after `has_value()` (or `if (result)`); take the reason from
/// `error()`.
template <typename Value>
using Result = boost::system::result<Value, Failure>;

/// A failure may be a result's error. Asking a result that holds one for its
/// value is a mistake in the program.
[[noreturn]] void throw_exception_from_error(
    const Failure& failure, const boost::source_location& place);

}  // namespace base
