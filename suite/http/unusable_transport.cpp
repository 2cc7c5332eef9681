#include "suite/http/unusable_transport.h"

#include <deque>
#include <utility>

namespace http {
namespace {

class UnusableTransport final : public Transport {
 public:
  UnusableTransport(const Origin& origin, base::Failure failure)
      : address_(addressOf(origin)), failure_(std::move(failure)) {
    failure_.address = address_;
  }

  const std::string& address() const override { return address_; }
  bool live() const override { return true; }

  std::uint64_t start(Request request) override {
    Answer answer;
    answer.id = ++lastId_;
    answer.failure = failure_;
    answer.failure->uri = request.target;
    answers_.push_back(std::move(answer));
    return lastId_;
  }

  std::optional<Answer> next(base::Clock::time_point /*until*/) override {
    if (answers_.empty()) {
      return std::nullopt;
    }
    Answer answer = std::move(answers_.front());
    answers_.pop_front();
    return answer;
  }

  bool mayHaveArrived(std::uint64_t /*id*/) const override { return false; }
  void cancelAll() override { answers_.clear(); }
  TransportStats stats() const override { return {}; }

 private:
  std::string address_;
  base::Failure failure_;
  std::uint64_t lastId_ = 0;
  std::deque<Answer> answers_;
};

}  // namespace

std::unique_ptr<Transport> makeUnusableTransport(const Origin& origin,
                                                 base::Failure failure) {
  return std::make_unique<UnusableTransport>(origin, std::move(failure));
}

}  // namespace http
