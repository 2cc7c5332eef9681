#pragma once

#include <cstddef>
#include <optional>

#include "suite/base/failure.h"

namespace redfish {

/// Most memory for the documents of one service: keeps a run below 128 MiB
/// whatever the service sends. Real servers with all their registries take
/// half of it.
constexpr std::size_t kMaxReadingBytes = std::size_t{18} << 20U;

/// Most memory that a parsed JSON value takes beside its text.
constexpr std::size_t kBytesPerValue = 96;

/// Limits the memory for the documents that a run keeps of one service. A
/// document counts with its text and `kBytesPerValue` for each value in it.
/// Nothing is ever given back.
class ReadingBudget {
 public:
  explicit ReadingBudget(std::size_t bytes = kMaxReadingBytes)
      : whole_(bytes), left_(bytes) {}

  /// Takes the memory for a document before it is parsed. Returns why not
  /// (`kBadContent`) if there is not enough left, and takes nothing then.
  std::optional<base::Failure> spend(std::size_t textBytes, std::size_t values);

  /// Whether a document was refused.
  bool exceeded() const { return exceeded_; }

 private:
  std::size_t whole_;
  std::size_t left_;
  bool exceeded_ = false;
};

}  // namespace redfish
