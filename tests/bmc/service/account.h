#pragma once

#include <string>
#include <string_view>

#include "tests/bmc/service/sessions.h"
#include "tests/bmc/wire/message.h"

namespace bmc {

/// The one account that may log in.
struct Account {
  std::string user;
  std::string password;
};

/// Whether user and password are the account's.
bool matches(const Account& account, std::string_view user,
             std::string_view password);

/// How a request proves who sent it: a session's token, else HTTP Basic
/// (RFC 7617) with the account's credentials; `kRefused` when it tries and
/// fails, `kNone` when it does not try.
Authentication authenticate(const Headers& headers, const Account& account,
                            const Sessions& sessions);

}  // namespace bmc
