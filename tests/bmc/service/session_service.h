#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "tests/bmc/record/counters.h"
#include "tests/bmc/service/account.h"
#include "tests/bmc/service/session_life.h"
#include "tests/bmc/service/sessions.h"
#include "tests/bmc/wire/message.h"

namespace bmc {

/// Sessions as resources (DSP0266, "Redfish session login authentication"):
/// a POST to the collection logs in, a DELETE of a member logs out.
class SessionService {
 public:
  /// `collection` is the path of the sessions' collection.
  SessionService(std::string collection, Account account, std::size_t limit,
                 SessionLife life, Counters& counters);

  const std::string& collection() const { return collection_; }
  const Account& account() const { return account_; }

  /// How a request proves who sent it. Each use of a token counts towards the
  /// end of its session's life; the request after the last one is refused.
  Authentication authenticate(const Headers& headers);

  /// Whether a path is the collection or a member of it.
  bool owns(std::string_view path) const;

  /// Answers a login; `body` is that of the POST.
  Reply login(const std::string& body);

  /// Answers a DELETE, or a GET, of a path that is owned. The caller has
  /// checked that the request may do so.
  Reply logout(std::string_view path);
  Reply show(std::string_view path) const;

 private:
  std::string idOf(std::string_view path) const;
  std::string describe(const Session& session) const;

  std::string collection_;
  Account account_;
  Sessions sessions_;
  SessionLife life_;
  Counters& counters_;
};

}  // namespace bmc
