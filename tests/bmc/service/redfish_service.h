#pragma once

#include <boost/json/object.hpp>
#include <cstddef>
#include <string>
#include <string_view>

#include "tests/bmc/record/counters.h"
#include "tests/bmc/service/session_life.h"
#include "tests/bmc/service/session_service.h"
#include "tests/bmc/service/target.h"
#include "tests/bmc/service/tree.h"
#include "tests/bmc/wire/message.h"

namespace bmc {

/// What a service offers beyond the plain reading of resources.
struct ServiceSettings {
  Account account;
  bool open = false;            ///< No request needs a login.
  std::size_t maxSessions = 8;  ///< Size of the session table.
  SessionLife sessionLife;
  int maxExpandLevels = 0;   ///< 0: `$expand` is not supported.
  std::size_t pageSize = 0;  ///< Members of a page; 0: no pages.
};

/// A Redfish service (DSP0266) over a recorded tree: reading, sessions and
/// Basic authentication. The tree's root names the collection of sessions;
/// where it names none, it is the standard one.
class RedfishService : public Responder {
 public:
  /// With `$expand` supported, the root says so (ProtocolFeaturesSupported);
  /// without it, the root says what was recorded. `counters` must outlive the
  /// service.
  RedfishService(Tree tree, ServiceSettings settings, Counters& counters);

  Reply answer(const Request& request) override;

 private:
  Reply route(const Request& request, const Target& target,
              Authentication authentication);
  Reply read(const Target& target) const;
  Reply readObject(const Target& target, boost::json::object object) const;

  Tree tree_;
  ServiceSettings settings_;
  Counters& counters_;
  SessionService sessions_;
};

}  // namespace bmc
