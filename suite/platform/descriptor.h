#pragma once

namespace platform {

/// A file descriptor that is closed at the end of its scope.
class Descriptor {
 public:
  /// Takes over a descriptor; -1: none.
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor();

  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int number() const { return number_; }

 private:
  int number_;
};

}  // namespace platform
