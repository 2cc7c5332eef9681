#pragma once

#include <boost/format/format_fwd.hpp>
#include <initializer_list>
#include <string_view>

/// Prints one line of a table: the values, in order, in the table's column
/// format. A table makes one format object and uses it for its header and
/// every row. The values are never read as a format pattern; a value wider
/// than its column is printed whole and shifts the rest of its line.
void printRow(boost::format& columns,
              std::initializer_list<std::string_view> values,
              int line = __builtin_LINE());
