#pragma once

#include <boost/json/value.hpp>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/bmc/faults/number_range.h"
#include "tests/bmc/faults/tree_edit.h"
#include "tests/bmc/ipmi/ipmi.h"
#include "tests/bmc/service/session_life.h"
#include "tests/bmc/wire/connection_policy.h"
#include "tests/bmc/wire/generated_body.h"
#include "tests/bmc/wire/message.h"
#include "tests/bmc/wire/server_identity.h"

namespace bmc {

/// How a body is made.
struct BodyRecipe {
  std::vector<BodyPart> parts;
  bool gzip = false;  ///< In gzip coding, whether the client accepts it or not.
};

/// What is different about an answer. Texts may hold the marks that README.md
/// lists.
struct ReplyEdit {
  std::optional<int> status;
  /// In order; without a value the header is taken out.
  std::vector<std::pair<std::string, std::optional<std::string>>> headers;
  std::optional<std::string> error;  ///< Message key of an error body.
  std::optional<BodyRecipe> body;
  JsonEdit json;
};

/// What is different about the way in which an answer is sent.
struct DeliveryEdit {
  std::chrono::milliseconds delay{0};  ///< On top of all others.
  bool silent = false;
  std::size_t stepBytes = 0;
  std::chrono::milliseconds stepEvery{0};
  std::optional<std::uint64_t> cutAfter;
  bool chunked = false;
  Ending ending = Ending::kKeep;
};

/// Some requests and what is different about their answers.
struct FaultRule {
  std::optional<std::string> method;
  std::optional<std::string> path;    ///< Pattern, for the path as resources
                                      ///< are named: decoded, no last slash.
  std::optional<std::string> target;  ///< Pattern, for the target as it came.
  NumberRange nth;         ///< Of the requests that fit all but this.
  NumberRange connection;  ///< Number of the connection.
  NumberRange ordinal;     ///< Place of the request on its connection.

  bool replaces = false;  ///< The service is not asked at all.
  ReplyEdit edit;
  DeliveryEdit delivery;
};

/// Some connections and what happens to them.
struct ConnectionRule {
  NumberRange numbers;
  ConnectionPlan plan;
};

/// All that a controller does wrong.
struct FaultPlan {
  TlsFaults tls;
  std::vector<ConnectionRule> connections;  ///< The first that fits holds.
  SessionLife sessions;
  std::vector<TreeEdit> tree;    ///< One after another.
  std::vector<FaultRule> rules;  ///< The first that fits holds.
  std::optional<IpmiSettings> ipmi;
};

}  // namespace bmc
