#include "suite/redfish/recorded/directory_transport.h"

#include <deque>

#include "suite/base/text.h"
#include "suite/redfish/recorded/recorded_tree.h"
#include "suite/redfish/recorded/stored_answer.h"

namespace redfish {
namespace {

class DirectoryTransport final : public http::Transport {
 public:
  explicit DirectoryTransport(std::filesystem::path directory)
      : address_("file:" + base::cleanText(directory.u8string())),
        tree_(std::move(directory)) {}

  const std::string& address() const override { return address_; }

  bool live() const override { return false; }

  std::uint64_t start(http::Request request) override {
    ++stats_.requests;
    started_.push_back({++lastId_, std::move(request)});
    return lastId_;
  }

  std::optional<http::Answer> next(base::Clock::time_point /*until*/) override {
    if (started_.empty()) {
      return std::nullopt;
    }
    // Read only now, so that there is one file at a time in memory.
    http::Answer answer = answerTo(started_.front().request);
    answer.id = started_.front().id;
    started_.pop_front();
    stats_.bytes += answer.body.size();
    return answer;
  }

  void cancelAll() override { started_.clear(); }

  http::TransportStats stats() const override { return stats_; }

 private:
  struct Started {
    std::uint64_t id;
    http::Request request;
  };

  http::Answer answerTo(const http::Request& request) {
    http::Answer answer;
    if (request.method != http::Method::kGet) {
      answer.status = 405;
      return answer;
    }
    RecordedTree::Stored stored = tree_.read(request.target);
    if (stored.failure) {
      answer.failure = std::move(stored.failure);
      answer.failure->address = address_;
      answer.failure->uri = request.target;
      return answer;
    }
    if (stored.answer) {
      answer.status = stored.answer->status;
      answer.location = std::move(stored.answer->location);
    } else {
      answer.status = stored.exists && !isErrorBody(stored.body) ? 200 : 404;
    }
    answer.body = std::move(stored.body);
    return answer;
  }

  std::string address_;
  RecordedTree tree_;
  std::deque<Started> started_;
  std::uint64_t lastId_ = 0;
  http::TransportStats stats_;
};

}  // namespace

std::unique_ptr<http::Transport> makeDirectoryTransport(
    std::filesystem::path directory) {
  return std::make_unique<DirectoryTransport>(std::move(directory));
}

}  // namespace redfish
