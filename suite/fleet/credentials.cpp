#include "suite/fleet/credentials.h"

#include <chrono>

#include "suite/base/log.h"
#include "suite/platform/interrupt.h"

namespace fleet {
namespace {

using base::Failure;
using base::FailureKind;
using connection::Credential;

// How often a wait looks whether the user has ended the run.
constexpr std::chrono::milliseconds kGlance{100};

base::Result<Credential> copyOf(const base::Result<Credential>& credential) {
  if (!credential) {
    return credential.error();
  }
  return Credential{base::Secret(credential->password), credential->origin};
}

Failure stopped(const std::string& user, int refusals) {
  Failure failure = base::makeFailure(
      FailureKind::kAuthentication,
      "not asked: the password of user " + user + " was refused by " +
          std::to_string(refusals) + " targets and accepted by none");
  failure.remedy = "check the user name and the password";
  return failure;
}

}  // namespace

bool RefusalGate::proven() const {
  const std::lock_guard lock(mutex_);
  return accepted_;
}

std::optional<Failure> RefusalGate::enter(base::Clock::time_point until) {
  std::unique_lock lock(mutex_);
  while (!accepted_ && refused_ < kMostRefusals &&
         refused_ + entered_ >= kMostRefusals) {
    const auto now = base::Clock::now();
    if (platform::interrupted()) {
      return base::makeFailure(FailureKind::kInterrupted,
                               "interrupted by the user");
    }
    if (now >= until) {
      return base::makeFailure(
          FailureKind::kDeadline,
          "not asked: no other target has accepted the password of user " +
              user_ + " in time");
    }
    changed_.wait_until(lock, std::min(until, now + kGlance));
  }
  if (!accepted_ && refused_ >= kMostRefusals) {
    return stopped(user_, refused_);
  }
  ++entered_;
  return std::nullopt;
}

void RefusalGate::leave(const Failure* failure) {
  const std::lock_guard lock(mutex_);
  --entered_;
  accepted_ = accepted_ || failure == nullptr;
  refused_ +=
      failure != nullptr && failure->kind == FailureKind::kAuthentication ? 1
                                                                          : 0;
  changed_.notify_all();
}

Credentials::Credentials(std::optional<base::Secret> environmentPassword)
    : environmentPassword_(std::move(environmentPassword)) {}

Credentials::Key Credentials::keyOf(const connection::Target& target) {
  return {target.user, target.password.settingsFile};
}

void Credentials::prepare(const connection::Target& target) {
  const Key key = keyOf(target);
  if (known_.count(key) > 0) {
    return;
  }
  const bool isCommon =
      !target.password.optionFile.empty() || target.password.standardInput;
  if (isCommon && !common_) {
    common_ = connection::findCredential(target, std::nullopt);
  }
  std::optional<base::Secret> environment;
  if (environmentPassword_) {
    environment.emplace(*environmentPassword_);
  }
  auto credential =
      isCommon ? copyOf(*common_)
               : connection::findCredential(target, std::move(environment));
  if (credential) {
    BRIVEL_LOG(base::kLogInformation)
        << "password of user " << target.user << " from " << credential->origin;
  }
  known_.emplace(key, Known{std::move(credential),
                            std::make_unique<RefusalGate>(target.user)});
}

const Credentials::Known& Credentials::of(
    const connection::Target& target) const {
  return known_.at(keyOf(target));
}

}  // namespace fleet
