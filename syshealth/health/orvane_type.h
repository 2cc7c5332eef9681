#pragma once

#include <cstdint>

#include "syshealth/host/connection_info.h"
#include "syshealth/host/export.h"

namespace Tarvex::Agentless {

/// Generation of a management controller.
enum OrvaneTypeValue : std::int32_t {
  kOrvaneTypeUnknown = 0,
  kOrvaneType1 = 1,      ///< Older: answers IPMI 1.5 only.
  kOrvaneType2 = 2,      ///< Older: answers IPMI 2.0 only.
  kOrvaneTypeDravik = 3  ///< Newest: a Redfish service with systems.
};

/// Probe for the generation of one target's controller.
class BRIVEL_SUITE_API OrvaneTypeAcquire {
 public:
  explicit OrvaneTypeAcquire(
      const TarvexConnection::ConnectionInfo& connection);
  ~OrvaneTypeAcquire();

  OrvaneTypeAcquire(const OrvaneTypeAcquire&) = delete;
  OrvaneTypeAcquire& operator=(const OrvaneTypeAcquire&) = delete;

  /// 0, and the generation in `type`; any other value is a failure, and
  /// `type` stays as it was.
  int GetOrvaneType(OrvaneTypeValue& type);

 private:
  TarvexConnection::ConnectionInfo connection_;
};

}  // namespace Tarvex::Agentless
