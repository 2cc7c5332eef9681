#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "suite/http/transport.h"

/// Calls `use` with the parts of an input: each begins with a line "@HEAD" and
/// goes up to the next such line. `head` is without the "@".
void forEachPart(std::string_view input,
                 const std::function<void(std::string_view head,
                                          std::string_view body)>& use);

/// A controller that answers by an input: a row of answers, each a line
/// "@STATUS TARGET" ("@STATUS POST TARGET", "@STATUS DELETE TARGET") and the
/// body up to the next such line. The first line of a body is its Location,
/// too. What is asked for and not there is a 404.
///
/// It checks what each request must keep: its target stays below /redfish/,
/// what is deleted stands below the collection that was posted to, and there
/// are no more of them than a reading may send.
class AnsweringTransport : public http::Transport {
 public:
  explicit AnsweringTransport(std::string_view input);

  const std::string& address() const override { return address_; }
  bool live() const override { return true; }
  std::uint64_t start(http::Request request) override;
  std::optional<http::Answer> next(base::Clock::time_point until) override;
  void cancelAll() override { ready_.clear(); }
  http::TransportStats stats() const override { return {}; }

 private:
  void add(std::string_view head, std::string_view body);

  std::map<std::string, http::Answer> answers_;
  std::deque<http::Answer> ready_;
  std::string address_ = "fuzz";
  std::string posted_;  ///< Target of the last login.
  std::uint64_t last_ = 0;
};
