#pragma once

#include <string>
#include <string_view>

#include "tests/bmc/wire/message.h"

namespace bmc {

/// A failing answer with the error body that DSP0266 prescribes: one message
/// of the Base registry, its key, text and severity.
Reply errorReply(int status, std::string_view messageKey, std::string message);

/// An answer whose body is JSON text.
Reply jsonReply(int status, std::string text);

}  // namespace bmc
