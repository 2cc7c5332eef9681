#pragma once

#include <string>
#include <string_view>

namespace devhealth {

/// The name of a maker of memory. A text that is a code of the JEDEC list of
/// manufacturers (JEP106), such as "0xCE00" or "80CE", becomes the maker's name
/// if the list holds it; any other text stays. Two digits, or four with a byte
/// of zeros, are a code of the first bank. Otherwise one byte is the code and
/// the other one the number of continuation codes before it.
std::string memoryMaker(std::string_view text);

}  // namespace devhealth
