#include "suite/redfish/recording/recording_transport.h"

#include <map>
#include <string>
#include <utility>

#include "suite/http/basic_login.h"

namespace redfish {
namespace {

class RecordingTransport final : public http::Transport {
 public:
  RecordingTransport(std::unique_ptr<http::Transport> transport,
                     Recording& recording)
      : transport_(std::move(transport)), recording_(recording) {}

  const std::string& address() const override { return transport_->address(); }
  bool live() const override { return transport_->live(); }

  std::uint64_t start(http::Request request) override {
    recording_.noteSecret(base::Secret(request.authToken));
    recording_.noteSecret(base::Secret(request.basicPassword));
    if (!request.basicPassword.empty()) {
      recording_.noteSecret(
          http::basicLogin(request.basicUser, request.basicPassword));
    }
    const bool read = request.method == http::Method::kGet;
    std::string target = request.target;
    const std::uint64_t id = transport_->start(std::move(request));
    if (read) {
      targets_[id] = std::move(target);
      recording_.countUnderWay(1);
    }
    return id;
  }

  std::optional<http::Answer> next(base::Clock::time_point until) override {
    std::optional<http::Answer> answer = transport_->next(until);
    if (!answer) {
      return answer;
    }
    recording_.noteSecret(base::Secret(answer->authToken));
    const auto asked = targets_.find(answer->id);
    if (asked != targets_.end()) {
      recording_.keep(asked->second, *answer);
      recording_.countUnderWay(-1);
      targets_.erase(asked);
    }
    return answer;
  }

  void deferInterrupt(bool defer) override {
    transport_->deferInterrupt(defer);
  }
  bool mayHaveArrived(std::uint64_t id) const override {
    return transport_->mayHaveArrived(id);
  }
  void cancelAll() override { transport_->cancelAll(); }
  void disableCompression() override { transport_->disableCompression(); }
  void disableHttp2() override { transport_->disableHttp2(); }
  http::TransportStats stats() const override { return transport_->stats(); }

 private:
  std::unique_ptr<http::Transport> transport_;
  Recording& recording_;
  std::map<std::uint64_t, std::string> targets_;  // Of reads under way.
};

}  // namespace

std::unique_ptr<http::Transport> makeRecordingTransport(
    std::unique_ptr<http::Transport> transport, Recording& recording) {
  return std::make_unique<RecordingTransport>(std::move(transport), recording);
}

}  // namespace redfish
