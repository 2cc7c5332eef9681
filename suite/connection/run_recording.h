#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>

#include "suite/base/result.h"
#include "suite/http/transport.h"
#include "suite/local/facts/root.h"
#include "suite/masking/masker.h"
#include "suite/platform/files/private_folder.h"
#include "suite/redfish/recording/recording.h"

namespace connection {

/// What a run reads, stored in a folder when it is over: of one service, or of
/// the machine itself, in the folder itself, of several services in
/// "controller-1", "controller-2" and so on. Until it is whole, a file
/// INCOMPLETE in it says so. Must outlive the services.
class RunRecording {
 public:
  /// The file that marks a folder whose recording is not whole.
  static constexpr const char* kMark = "INCOMPLETE";

  /// `masked`: what identifies the server and its users is replaced.
  RunRecording(std::string folder, bool masked);

  /// Makes the folder. Returns a clause that names the folder if it cannot be
  /// written, so that nothing is recorded; else an empty text. Fails if the
  /// folder is in use, so that the run must not go on.
  base::Result<std::string> begin();

  /// A transport that records what is read through another one.
  std::unique_ptr<http::Transport> recorded(
      std::unique_ptr<http::Transport> transport);

  /// The run reads the machine itself.
  void recordMachine(const local::Root& root) { machine_ = root; }

  /// A name of the target: masked wherever it is read.
  void noteName(const std::string& name);

  /// Who logs in: the user is masked wherever it is read; the password, also as
  /// HTTP Basic sends it, is never recorded.
  void noteLogin(const std::string& user, const base::Secret& password);

  /// Writes everything. Returns nullopt on success, and a clause that names the
  /// folder if something is missing in it. `interrupted`: the user ended the
  /// run before its time.
  std::optional<std::string> finish(bool interrupted);

 private:
  std::string called() const;
  std::string store();
  std::string storeMachine();
  std::string storeService(const redfish::Recording& service,
                           const std::string& below);
  void mark(const std::string& why);

  std::string name_;
  bool masked_;
  std::optional<platform::PrivateFolder> folder_;
  masking::Masker masker_;
  std::deque<redfish::Recording> services_;
  std::optional<local::Root> machine_;
};

}  // namespace connection
