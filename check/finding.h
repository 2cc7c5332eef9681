#pragma once

#include <string>
#include <string_view>

#include "check/status.h"
#include "suite/report/report.h"

namespace check {

/// Something that is wrong with a server.
struct Finding {
  Status status = Status::kCritical;  ///< kWarning or kCritical.
  report::Category category = report::Category::kSystem;
  std::string messageId;  ///< May be empty.
  std::string origin;     ///< Path of the resource; may be empty.
  std::string text;       ///< For a person, without the category.
  bool ignored = false;   ///< Listed, but does not count.
};

/// What a category is called in messages: "Power".
std::string_view nameOf(report::Category category);

}  // namespace check
