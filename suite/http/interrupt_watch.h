#pragma once

#include "suite/platform/interrupt.h"

namespace http {

/// What a transport over the network makes of the user's wish to end the run:
/// it is told once, and not while it is deferred.
class InterruptWatch {
 public:
  void defer(bool defer) { deferred_ = defer; }

  /// Whether a wait has to end when the user asks. What it would watch stays
  /// signalled for good, so it is watched only until the wish was told.
  bool watching() const { return !told_ && !deferred_; }

  /// Whether the user has asked and was not told of yet.
  bool asked() const { return watching() && platform::interrupted(); }

  /// The same; tells it now.
  bool tell() {
    if (!asked()) {
      return false;
    }
    told_ = true;
    return true;
  }

 private:
  bool told_ = false;
  bool deferred_ = false;
};

}  // namespace http
