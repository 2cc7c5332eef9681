#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "suite/base/secret.h"
#include "suite/http/transport.h"
#include "suite/masking/masker.h"

namespace redfish {

/// A file of a recording.
struct RecordedFile {
  std::string path;  ///< Below the recording's folder, "/" between names.
  std::string bytes;
};

/// What one service answered in a run, kept until the run is over, because only
/// then all is known that must be masked. Does no input or output.
class Recording {
 public:
  /// Most bytes of bodies that are kept.
  static constexpr std::size_t kMostBytes = std::size_t{18} << 20U;

  /// Keeps the answer to a GET of `target`; the last one to a target counts.
  /// Answers below a collection of sessions, and those that do not fit, are
  /// not kept.
  void keep(std::string_view target, const http::Answer& answer);

  /// Notes a user who logs in, and what proves that: neither ever becomes part
  /// of the files. `name` may be empty.
  void noteUser(std::string name) { users_.push_back(std::move(name)); }
  void noteSecret(base::Secret secret);

  /// A request was sent (+1), or its end is known (-1).
  void countUnderWay(int change) { underWay_ += change; }

  /// Whether no request was answered.
  bool empty() const;

  /// Why the recording is not all that the run read; empty if it is.
  std::string missing() const;

  /// Tells a masker everything that identifies in these answers.
  void note(masking::Masker& masker) const;

  /// Calls `take` with each file; `masker` may be null for a recording as it
  /// is. The secrets are blackened in both.
  void forEachFile(masking::Masker* masker,
                   const std::function<void(const RecordedFile&)>& take) const;

 private:
  std::string withoutSecrets(std::string text) const;
  std::string bodyWithoutSecrets(const std::string& body) const;
  std::string bodyOf(const std::string& body, masking::Masker* masker) const;

  /// By path and query, without anything of a login.
  std::map<std::string, http::Answer> answers_;
  std::vector<std::string> users_;
  std::vector<base::Secret> secrets_;
  std::size_t bytes_ = 0;
  std::size_t refused_ = 0;  ///< Answers that did not fit.
  int underWay_ = 0;
};

}  // namespace redfish
