#pragma once

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "suite/base/result.h"
#include "suite/base/secret.h"
#include "suite/connection/password/credential.h"
#include "suite/connection/settings/target.h"
#include "suite/redfish/session/login_gate.h"

namespace fleet {

/// Stops a password that nobody accepts: until one service has accepted it, at
/// most `kMostRefusals` logins are under way or refused, and after so many
/// refusals it is sent to nobody any more. Controllers, and the directories
/// behind them, lock accounts.
class RefusalGate : public redfish::LoginGate {
 public:
  static constexpr int kMostRefusals = 3;

  /// `user` is named in the failure.
  explicit RefusalGate(std::string user) : user_(std::move(user)) {}

  bool proven() const override;
  std::optional<base::Failure> enter(base::Clock::time_point until) override;
  void leave(const base::Failure* failure) override;

 private:
  std::string user_;
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  bool accepted_ = false;
  int refused_ = 0;
  int entered_ = 0;  ///< Logins under way.
};

/// The passwords of a fleet. Each source is asked once, a person too.
/// `prepare` is for one thread, `of` for any number.
class Credentials {
 public:
  struct Known {
    base::Result<connection::Credential> credential;
    std::unique_ptr<RefusalGate> gate;
  };

  explicit Credentials(std::optional<base::Secret> environmentPassword);

  /// Finds the password of a target's user, unless that is known.
  void prepare(const connection::Target& target);

  /// What was found for a target that was prepared.
  const Known& of(const connection::Target& target) const;

 private:
  // User, and the place in the settings where the password is from.
  using Key = std::pair<std::string, std::string>;
  static Key keyOf(const connection::Target& target);

  std::optional<base::Secret> environmentPassword_;
  /// What serves all users alike: an option's file, or standard input.
  std::optional<base::Result<connection::Credential>> common_;
  std::map<Key, Known> known_;
};

}  // namespace fleet
