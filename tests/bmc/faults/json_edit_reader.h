#pragma once

#include "tests/bmc/faults/object_reader.h"
#include "tests/bmc/faults/tree_edit.h"

namespace bmc {

/// The members "fill", "remove" and "set" of an object in a fault file.
JsonEdit readJsonEdit(ObjectReader& reader);

}  // namespace bmc
