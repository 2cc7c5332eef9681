#include "tests/suite/redfish/script_transport.h"

#include <algorithm>
#include <thread>
#include <utility>

#include "suite/redfish/recorded/directory_transport.h"

namespace {

using http::Answer;
using http::Method;
using http::Request;

std::string nameOf(const http::Request& request) {
  switch (request.method) {
    case http::Method::kPost:
      return "POST " + request.target;
    case http::Method::kDelete:
      return "DELETE " + request.target;
    case http::Method::kGet:
      break;
  }
  return "GET " + request.target;
}

class ScriptTransport : public http::Transport {
 public:
  explicit ScriptTransport(std::shared_ptr<Script> script)
      : script_(std::move(script)) {
    if (!script_->tree.empty()) {
      tree_ = redfish::makeDirectoryTransport(script_->tree);
    }
  }

  const std::string& address() const override { return address_; }
  bool live() const override { return script_->live; }

  std::uint64_t start(http::Request request) override {
    Script& script = *script_;
    const std::string name = nameOf(request);
    script.requests.push_back(name);
    if (request.freshConnection) {
      ++script.fresh;
    }
    http::Answer answer = answerTo(name, request);
    script.sent.push_back(std::move(request));
    answer.id = ++last_;
    if (name == script.stalled) {
      return last_;
    }
    ready_.push_back(std::move(answer));
    script.underWay = ready_.size();
    script.mostUnderWay = std::max(script.mostUnderWay, script.underWay);
    return last_;
  }

  std::optional<http::Answer> next(base::Clock::time_point until) override {
    if (ready_.empty()) {
      if (!script_->stalled.empty()) {
        std::this_thread::sleep_until(until);
      }
      return std::nullopt;
    }
    http::Answer answer = std::move(ready_.front());
    ready_.pop_front();
    script_->underWay = ready_.size();
    return answer;
  }

  void cancelAll() override { ready_.clear(); }

  http::TransportStats stats() const override {
    http::TransportStats stats;
    stats.requests = last_;
    return stats;
  }

 private:
  http::Answer answerTo(const std::string& name, const http::Request& request) {
    Script& script = *script_;
    if (const auto found = script.answers.find(name);
        found != script.answers.end()) {
      http::Answer answer = found->second.front();
      if (found->second.size() > 1) {
        found->second.pop_front();
      }
      if (request.method == http::Method::kPost && !answer.authToken.empty()) {
        ++script.sessionsOpen;
      }
      return answer;
    }
    if (request.method == http::Method::kPost && script.grantsSessions) {
      http::Answer answer = answerOf(201);
      answer.authToken = base::Secret("token-" + std::to_string(++granted_));
      answer.location = request.target + "/" + std::to_string(granted_);
      ++script.sessionsOpen;
      return answer;
    }
    if (request.method == http::Method::kDelete) {
      --script.sessionsOpen;
      return answerOf(204, "");
    }
    if (request.method == http::Method::kGet && tree_) {
      tree_->start(request);
      return *tree_->next(base::Clock::time_point::max());
    }
    return answerOf(404, "");
  }

  std::shared_ptr<Script> script_;
  std::unique_ptr<http::Transport> tree_;
  std::deque<http::Answer> ready_;
  std::string address_ = "bmc.test:443";
  std::uint64_t last_ = 0;
  int granted_ = 0;
};

}  // namespace

Script& Script::on(const std::string& request, int status, std::string body) {
  return on(request, answerOf(status, std::move(body)));
}

Script& Script::on(const std::string& request, http::Answer answer) {
  answers[request].push_back(std::move(answer));
  return *this;
}

std::size_t Script::count(const std::string& start) const {
  return static_cast<std::size_t>(std::count_if(
      requests.begin(), requests.end(), [&](const std::string& request) {
        return request.compare(0, start.size(), start) == 0;
      }));
}

http::Answer answerOf(int status, std::string body) {
  http::Answer answer;
  answer.status = status;
  answer.body = std::move(body);
  return answer;
}

http::Answer failureOf(base::FailureKind kind) {
  http::Answer answer;
  base::Failure failure;
  failure.kind = kind;
  failure.address = "bmc.test:443";
  failure.cause = "scripted";
  answer.failure = std::move(failure);
  return answer;
}

std::unique_ptr<http::Transport> makeScriptTransport(
    std::shared_ptr<Script> script) {
  return std::make_unique<ScriptTransport>(std::move(script));
}
