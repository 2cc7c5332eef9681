#include "fuzz/answers.h"

#include <algorithm>
#include <utility>

#include "fuzz/require.h"
#include "suite/base/ascii.h"
#include "suite/redfish/graph/uri.h"

namespace {

using http::Answer;
using http::Method;
using http::Request;

// A reading has at most 2000 resources. Some are asked for twice, and those of
// a login come on top.
constexpr std::uint64_t kMostRequests = 6000;
// Encoding may make a link that was short enough longer than this.
constexpr std::size_t kLongestLink = 1024;

}  // namespace

void forEachPart(std::string_view input,
                 const std::function<void(std::string_view head,
                                          std::string_view body)>& use) {
  while (!input.empty()) {
    const std::size_t next = input.find("\n@");
    const std::string_view part = input.substr(0, next);
    input = next == std::string_view::npos ? std::string_view()
                                           : input.substr(next + 1);
    const std::size_t lineEnd = std::min(part.find('\n'), part.size());
    if (part.front() == '@') {
      use(part.substr(1, lineEnd - 1),
          part.substr(std::min(lineEnd + 1, part.size())));
    }
  }
}

AnsweringTransport::AnsweringTransport(std::string_view input) {
  forEachPart(input, [this](std::string_view head, std::string_view body) {
    add(head, body);
  });
}

std::uint64_t AnsweringTransport::start(Request request) {
  require(request.target == "/redfish" ||
          redfish::Uri::parse(request.target).has_value() ||
          request.target.size() > kLongestLink);
  if (request.method == Method::kPost) {
    posted_ = request.target;
  } else if (request.method == Method::kDelete) {
    require(!posted_.empty() &&
            base::startsWith(request.target, posted_ + "/"));
  }
  const char* method = request.method == Method::kPost     ? "POST "
                       : request.method == Method::kDelete ? "DELETE "
                                                           : "";
  const auto found = answers_.find(method + request.target);
  Answer answer;
  answer.status = 404;
  if (found != answers_.end()) {
    answer = Answer(found->second);
  }
  answer.id = ++last_;
  require(last_ <= kMostRequests);
  ready_.push_back(std::move(answer));
  return last_;
}

std::optional<Answer> AnsweringTransport::next(
    base::Clock::time_point /*until*/) {
  if (ready_.empty()) {
    return std::nullopt;
  }
  Answer answer = std::move(ready_.front());
  ready_.pop_front();
  return answer;
}

void AnsweringTransport::add(std::string_view head, std::string_view body) {
  const std::size_t blank = head.find(' ');
  if (blank == std::string_view::npos) {
    return;
  }
  Answer answer;
  for (const char digit : head.substr(0, std::min<std::size_t>(blank, 3))) {
    answer.status = answer.status * 10 + (digit & 7);
  }
  // Statuses that are waited for before they are repeated say nothing new.
  if (answer.status == 429 || answer.status >= 500) {
    answer.status = 501;
  }
  const std::string_view target = head.substr(blank + 1);
  if (target.compare(0, 5, "POST ") == 0) {
    answer.authToken = base::Secret("token");
  }
  answer.body = body;
  answer.location = answer.status < 400
                        ? answer.body.substr(0, answer.body.find('\n'))
                        : std::string();
  answers_[std::string(target)] = std::move(answer);
}
