#pragma once

#include <string>
#include <string_view>

#include "suite/masking/masker.h"

namespace redfish {

/// Tells a masker what in the body of an answer identifies the machine and its
/// users, by the names of members, and what is a word of the format. The body
/// need not be valid JSON.
void noteBody(std::string_view body, masking::Masker& masker);

/// The body masked; passwords, tokens and keys in members of such names are
/// blackened. What is no JSON object is masked as one text.
std::string maskBody(std::string_view body, masking::Masker& masker);

}  // namespace redfish
