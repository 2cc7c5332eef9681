#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

namespace local {

/// The rights of an ordinary user for as long as it lives, where the tests run
/// as root.
class OrdinaryUser {
 public:
  OrdinaryUser() {
    constexpr uid_t kNobody = 65534;
    if (before_ == 0 && seteuid(kNobody) != 0) {
      ADD_FAILURE();
    }
  }
  ~OrdinaryUser() {
    if (before_ == 0 && seteuid(before_) != 0) {
      ADD_FAILURE();
    }
  }

  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;

 private:
  const uid_t before_ = geteuid();
};

}  // namespace local
