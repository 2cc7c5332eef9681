#pragma once

#include <curl/curl.h>

#include <string>

namespace redfish {

/// Makes a handle that is about to ask over TLS note the pin of the key that
/// the server shows ("sha256//BASE64", RFC 7469, 2.4) in `pin`, whether it is
/// trusted or not; what is trusted stays as it is. `pin` has to outlive every
/// connection that the handle opens. Left as it is where a connection takes up
/// an earlier one's TLS session.
void notePresentedKey(CURL* easy, std::string& pin);

}  // namespace redfish
