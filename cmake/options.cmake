# How everything of ours is compiled: one interface target, linked privately.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
# Most sources of a room that are joined where CMAKE_UNITY_BUILD is on.
set(CMAKE_UNITY_BUILD_BATCH_SIZE 12)

# Counts up when the services that applications see change: their declarations
# in syshealth/, or the runtime that both sides share (docs/stability.md).
# An installed program looks for applications in a folder of this name, and so
# finds none that was built for another number.
set(BRIVEL_ABI 1)
set(BRIVEL_INSTALLED_MODULES applications-${BRIVEL_ABI})

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)

# What differs between the systems is a pair of sources of the same name, of
# which the one that ends in _${BRIVEL_SYSTEM}.cpp is compiled.
if(WIN32)
  set(BRIVEL_SYSTEM windows)
else()
  set(BRIVEL_SYSTEM posix)
endif()

add_library(brivel_options INTERFACE)
if(WIN32)
  # Windows 10 and its Unicode interfaces. GNU's printf understands the same
  # formats as on Linux.
  target_compile_definitions(brivel_options INTERFACE
    _WIN32_WINNT=0x0A00 WINVER=0x0A00 UNICODE _UNICODE NOMINMAX
    WIN32_LEAN_AND_MEAN __USE_MINGW_ANSI_STDIO=1)
endif()
target_include_directories(brivel_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(brivel_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
  $<$<BOOL:${SYSHEALTH_WARNINGS_AS_ERRORS}>:-Werror>)
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT WIN32)
  # A run is short: what counts is how little of the program has to be brought
  # into memory.
  target_compile_options(brivel_options INTERFACE
    -ffunction-sections -fdata-sections)
  target_link_options(brivel_options INTERFACE LINKER:--gc-sections)
  include(hardening)
endif()
if(SYSHEALTH_SANITIZE)
  target_compile_options(brivel_options INTERFACE
    -fsanitize=${SYSHEALTH_SANITIZE} -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  target_link_options(brivel_options INTERFACE
    -fsanitize=${SYSHEALTH_SANITIZE})
endif()

# shown_to_library(TARGET): what a room defines can be seen outside of
# libbrivel.so, as far as its exports.map names it.
function(shown_to_library target)
  set_target_properties(${target} PROPERTIES CXX_VISIBILITY_PRESET default)
  target_compile_options(${target} PRIVATE
    $<$<NOT:$<BOOL:${WIN32}>>:-fno-semantic-interposition>)
endfunction()

# What programs of tests, fuzz targets and benchmarks link of the suite: the
# ground floor, and with it the client of controllers.
set(BRIVEL_GROUND brivel_base brivel_platform)
set(BRIVEL_CLIENT ${BRIVEL_GROUND}
    brivel_http brivel_ipmi brivel_masking brivel_network_transport
    brivel_redfish)
