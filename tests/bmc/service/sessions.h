#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace bmc {

/// One login.
struct Session {
  std::string id;     ///< Last segment of its URI.
  std::string token;  ///< Value of X-Auth-Token.
  std::string user;
  std::uint64_t uses = 0;  ///< Requests with its token.
};

/// The table of open sessions, of limited size as on a real controller.
class Sessions {
 public:
  explicit Sessions(std::size_t limit) : limit_(limit) {}

  /// Opens a session; null when the table is full. Good until it is closed.
  const Session* open(std::string user);

  /// The session of an id, or of a token; null when there is none.
  const Session* find(std::string_view id) const;
  const Session* findByToken(std::string_view token) const;

  /// Counts a use of a session's token; null when there is none.
  const Session* use(std::string_view token);

  /// Closes the session of an id. False when there is none.
  bool close(std::string_view id);

  const std::map<std::string, Session, std::less<>>& all() const {
    return sessions_;
  }

 private:
  std::size_t limit_;
  std::uint64_t opened_ = 0;
  std::map<std::string, Session, std::less<>> sessions_;
};

}  // namespace bmc
