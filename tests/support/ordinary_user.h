#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

namespace support {

/// The rights of an ordinary user for as long as it lives, where the tests run
/// as root.
class OrdinaryUser {
 public:
  OrdinaryUser() {
    if (before_ == 0 && seteuid(kNobody) != 0) {
      ADD_FAILURE();
    }
  }
  ~OrdinaryUser() {
    if (before_ == 0 && seteuid(before_) != 0) {
      ADD_FAILURE();
    }
  }

  /// Whether the tests can be one: in some containers root is the only user.
  static bool possible() {
    const uid_t before = geteuid();
    return before != 0 || (seteuid(kNobody) == 0 && seteuid(before) == 0);
  }

  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;

 private:
  static constexpr uid_t kNobody = 65534;

  const uid_t before_ = geteuid();
};

}  // namespace support
