#include "suite/base/result.h"

#include <stdexcept>

namespace base {

void throw_exception_from_error(const Failure& failure,
                                const boost::source_location& place) {
  throw std::logic_error("no value at " + place.to_string() + ": " +
                         describe(failure));
}

}  // namespace base
