#pragma once

#include <cstdint>
#include <string>

namespace Tarvex::DeviceHealth {

/// One active event of a server, as its device-health service reports it.
struct Alert {
  std::string extra;      ///< Origin and time stamp; carried, never printed.
  std::string messageId;  ///< Identifier of the event message.
  std::int32_t severity;  ///< 0 normal, 1 warning, 2 error.
  std::string category;   ///< One of the eight category names, whole.
  std::string message;    ///< The event's text.
};

}  // namespace Tarvex::DeviceHealth
