#pragma once

#include <string>
#include <string_view>

namespace devhealth {

/// An identifier of an event message (DSP0266): registry prefix, major, minor
/// and possibly errata number of the registry, key of the message, with dots
/// between: "Base.1.8.1.ConditionInRelatedResource".
struct MessageId {
  std::string prefix;  ///< Empty when the text is a key alone.
  std::string major;   ///< Empty without a version.
  std::string minor;
  std::string key;  ///< The last part.
};

MessageId parseMessageId(std::string_view text);

/// Whether the message only says that there is a condition elsewhere.
bool isPointer(const MessageId& id);

}  // namespace devhealth
