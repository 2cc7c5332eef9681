#pragma once

#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "suite/http/transport.h"

/// What a scripted controller has seen and done; shared with the test, since
/// the service owns its transport.
struct Script {
  /// Answers to "GET /redfish/v1/Systems", in order; the last one is given
  /// for ever. What stands nowhere comes from `tree`, else it is a 404.
  std::map<std::string, std::deque<http::Answer>> answers;
  std::filesystem::path tree;  ///< A recorded server; may be empty.
  bool live = true;
  std::string stalled;         ///< A request that is never answered.
  bool grantsSessions = true;  ///< A POST that is not scripted makes a session.

  std::vector<std::string> requests;  ///< "GET /redfish/v1/", in order.
  std::vector<http::Request> sent;
  std::size_t underWay = 0;
  std::size_t mostUnderWay = 0;
  std::size_t fresh = 0;  ///< Requests that asked for a fresh connection.
  int sessionsOpen = 0;

  /// Adds an answer to what the key asks for.
  Script& on(const std::string& request, int status, std::string body = "{}");
  Script& on(const std::string& request, http::Answer answer);

  std::size_t count(const std::string& start) const;
};

http::Answer answerOf(int status, std::string body = "{}");
http::Answer failureOf(base::FailureKind kind);

/// A transport that answers by a script, in the order of asking.
std::unique_ptr<http::Transport> makeScriptTransport(
    std::shared_ptr<Script> script);
