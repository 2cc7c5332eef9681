#include "suite/redfish/recorded/directory_transport.h"

#include <deque>

#include "suite/base/text.h"
#include "suite/redfish/graph/json.h"
#include "suite/redfish/recorded/recorded_tree.h"

namespace redfish {
namespace {

// Whether a stored body is an error response, recorded in place of a
// resource that could not be read.
bool isErrorBody(const std::string& body) {
  // Nearly every body is told apart without being parsed.
  if (body.find("\"error\"") == std::string_view::npos) {
    return false;
  }
  std::string reason;
  const std::optional<json::object> object = parseObject(body, reason);
  return object && object->contains("error") && !object->contains("@odata.id");
}

class DirectoryTransport final : public http::Transport {
 public:
  explicit DirectoryTransport(std::filesystem::path directory)
      : address_("file:" + base::cleanText(directory.u8string())),
        tree_(std::move(directory)) {}

  const std::string& address() const override { return address_; }

  bool live() const override { return false; }

  std::uint64_t start(http::Request request) override {
    http::Answer answer = answerTo(request);
    answer.id = ++lastId_;
    ++stats_.requests;
    stats_.bytes += answer.body.size();
    answers_.push_back(std::move(answer));
    return lastId_;
  }

  std::optional<http::Answer> next(base::Clock::time_point /*until*/) override {
    if (answers_.empty()) {
      return std::nullopt;
    }
    http::Answer answer = std::move(answers_.front());
    answers_.pop_front();
    return answer;
  }

  void cancelAll() override { answers_.clear(); }

  http::TransportStats stats() const override { return stats_; }

 private:
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
    answer.status = stored.exists && !isErrorBody(stored.body) ? 200 : 404;
    answer.body = std::move(stored.body);
    return answer;
  }

  std::string address_;
  RecordedTree tree_;
  std::deque<http::Answer> answers_;
  std::uint64_t lastId_ = 0;
  http::TransportStats stats_;
};

}  // namespace

std::unique_ptr<http::Transport> makeDirectoryTransport(
    std::filesystem::path directory) {
  return std::make_unique<DirectoryTransport>(std::move(directory));
}

}  // namespace redfish
