#pragma once

/// A name whose resolution does not end while an object of this class lives.
/// The test program's own `getaddrinfo` sees to that; all other names go to
/// the system's.
class StalledResolver {
 public:
  static constexpr const char* kName = "stalled.invalid";

  StalledResolver();
  ~StalledResolver();  ///< Waits until those who were held have gone.

  StalledResolver(const StalledResolver&) = delete;
  StalledResolver& operator=(const StalledResolver&) = delete;
};
