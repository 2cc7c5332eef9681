#pragma once

namespace platform {

/// A file descriptor that is closed at the end of its scope.
class Descriptor {
 public:
  /// Takes over a descriptor; -1: none.
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(other.release()) {}
  Descriptor& operator=(Descriptor&& other) noexcept;
  ~Descriptor();

  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int number() const { return number_; }

  /// Gives the descriptor away, to be closed by the caller.
  int release();

 private:
  int number_;
};

}  // namespace platform
