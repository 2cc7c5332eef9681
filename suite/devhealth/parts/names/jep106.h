#pragma once

#include <string>
#include <string_view>

namespace devhealth {

/// The name of a maker of memory: where a text is nothing but a code of the
/// JEDEC list of manufacturers (JEP106), such as "0xCE00" or "80CE", and the
/// list holds it, the maker's name; else the text as it stands. Two digits, or
/// four with a byte of zeros, are a code of the first bank; otherwise one byte
/// is the code and the other one the number of continuation codes before it.
std::string memoryMaker(std::string_view text);

}  // namespace devhealth
