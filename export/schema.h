#pragma once

namespace exporting {

/// docs/brivel-report.schema.json, whole.
extern const char kJsonSchema[];

}  // namespace exporting
