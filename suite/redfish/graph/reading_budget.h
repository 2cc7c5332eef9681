#pragma once

#include <cstddef>
#include <optional>

#include "suite/base/failure.h"

namespace redfish {

/// What the documents of one service may take, so that a run stays below
/// 256 MiB whatever the service sends. Real servers with all their registries
/// take a fifth of it.
constexpr std::size_t kMaxReadingBytes = std::size_t{48} << 20U;

/// What a JSON value takes beside its text once it is parsed, at most.
constexpr std::size_t kBytesPerValue = 96;

/// The room for all documents that are kept of one service, for the length of
/// a run. A document counts with its text and `kBytesPerValue` for each value
/// in it. What was spent stays spent.
class ReadingBudget {
 public:
  explicit ReadingBudget(std::size_t bytes = kMaxReadingBytes)
      : whole_(bytes), left_(bytes) {}

  /// Takes the room for a document before it is parsed. Returns why not
  /// (`kBadContent`) if there is not enough left, and takes nothing then.
  std::optional<base::Failure> spend(std::size_t textBytes, std::size_t values);

  /// Whether there was no room for a document.
  bool exceeded() const { return exceeded_; }

 private:
  std::size_t whole_;
  std::size_t left_;
  bool exceeded_ = false;
};

}  // namespace redfish
