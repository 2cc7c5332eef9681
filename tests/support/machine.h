#pragma once

namespace support {

// What not every machine has. A test that needs it is skipped without, and
// says what is missing.

/// Whether programs can be given terminals of their own.
bool hasTerminals();

}  // namespace support
