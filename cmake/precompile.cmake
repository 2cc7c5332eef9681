# What most sources begin with is compiled once for a room of many sources:
# half of the time of a build goes into reading headers. Each source still
# includes what it uses; the packages are built without this, and notice.
set(BRIVEL_COMMON_HEADERS
  <algorithm> <array> <chrono> <cstdint> <functional> <map> <memory> <optional>
  <set> <string> <string_view> <utility> <vector> <boost/system/result.hpp>)
set(BRIVEL_JSON_HEADERS
  <boost/json/array.hpp> <boost/json/object.hpp> <boost/json/value.hpp>)
set(BRIVEL_TEST_HEADERS <gmock/gmock.h> <gtest/gtest.h>)

# precompile(TARGET [HEADER...]): the common headers, and these.
function(precompile target)
  target_precompile_headers(${target} PRIVATE ${BRIVEL_COMMON_HEADERS} ${ARGN})
endfunction()
