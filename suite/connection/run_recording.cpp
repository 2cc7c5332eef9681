#include "suite/connection/run_recording.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "suite/http/basic_login.h"
#include "suite/local/recording/recorder.h"
#include "suite/redfish/recording/recording_transport.h"

namespace connection {
namespace {

using platform::PrivateFolder;

constexpr const char* kUnfinished =
    "the run that makes it has not ended, or was killed";

}  // namespace

RunRecording::RunRecording(std::string folder, bool masked)
    : name_(std::move(folder)), masked_(masked) {}

base::Result<std::string> RunRecording::begin() {
  PrivateFolder::Refusal refusal = PrivateFolder::Refusal::kNone;
  std::string reason;
  folder_ =
      PrivateFolder::make(std::filesystem::u8path(name_), refusal, reason);
  if (refusal == PrivateFolder::Refusal::kInUse) {
    return base::makeFailure(
        base::FailureKind::kUsage,
        called() + reason + "; name a folder that is new or empty");
  }
  if (folder_ &&
      !folder_->write(kMark, std::string(kUnfinished) + "\n", reason)) {
    folder_.reset();
  }
  return folder_ ? "" : called() + "it cannot be written: " + reason;
}

std::unique_ptr<http::Transport> RunRecording::recorded(
    std::unique_ptr<http::Transport> transport) {
  return folder_ ? redfish::makeRecordingTransport(std::move(transport),
                                                   services_.emplace_back())
                 : std::move(transport);
}

void RunRecording::noteName(const std::string& name) { masker_.note(name); }

void RunRecording::noteLogin(const std::string& user,
                             const base::Secret& password) {
  masker_.note(user);
  for (redfish::Recording& service : services_) {
    service.noteSecret(base::Secret(password));
    if (!password.empty()) {
      service.noteSecret(http::basicLogin(user, password));
    }
  }
}

std::optional<std::string> RunRecording::finish(bool interrupted) {
  if (!folder_) {
    return std::nullopt;  // `begin` has told why.
  }
  std::string missing = store();
  if (missing.empty() && interrupted) {
    missing = "the run was interrupted";
  }
  for (const redfish::Recording& service : services_) {
    missing = missing.empty() ? service.missing() : missing;
  }
  if (missing.empty() && masked_ && masker_.exceeded()) {
    missing = masking::Masker::kExceeded;
  }
  if (missing.empty()) {
    folder_->remove(kMark);
    return std::nullopt;
  }
  mark(missing);
  return called() + "the recording is incomplete: " + missing;
}

std::string RunRecording::called() const { return "--record " + name_ + ": "; }

// Writes the files of all services. Returns why something is missing.
std::string RunRecording::store() {
  if (machine_) {
    return storeMachine();
  }
  const auto empty = [](const redfish::Recording& service) {
    return service.empty();
  };
  if (std::all_of(services_.begin(), services_.end(), empty)) {
    return "nothing was read of the server";
  }
  // Controllers of one machine tell the same values, so all of them are known
  // before the first one is replaced.
  for (const redfish::Recording& service : services_) {
    service.note(masker_);
  }
  if (masked_ && masker_.exceeded()) {
    return masking::Masker::kExceeded;
  }
  std::string problem;
  for (std::size_t i = 0; i < services_.size() && problem.empty(); ++i) {
    problem = storeService(services_[i],
                           services_.size() == 1
                               ? ""
                               : "controller-" + std::to_string(i + 1) + "/");
  }
  return problem;
}

std::string RunRecording::storeMachine() {
  local::Recorder recorder(*machine_, *folder_, masked_ ? &masker_ : nullptr);
  recorder.record();
  if (recorder.files() == 0) {
    return "nothing was read of this machine";
  }
  return recorder.problems().empty() ? "" : recorder.problems().front();
}

std::string RunRecording::storeService(const redfish::Recording& service,
                                       const std::string& below) {
  std::string problem;
  service.forEachFile(
      masked_ ? &masker_ : nullptr, [&](const redfish::RecordedFile& file) {
        std::string reason;
        if (problem.empty() &&
            !folder_->write(below + file.path, file.bytes, reason)) {
          problem = below + file.path + " cannot be written: " + reason;
        }
      });
  return problem;
}

void RunRecording::mark(const std::string& why) {
  std::string ignored;  // The mark that `begin` left says enough.
  if (folder_->remove(kMark) && !folder_->write(kMark, why + "\n", ignored)) {
    folder_->write(kMark, "", ignored);
  }
}

}  // namespace connection
