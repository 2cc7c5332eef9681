# Libraries that are compiled into ours from their headers, although Debian has
# a shared library of each one as well: a run uses a few functions of them, and
# would look up some 2,000 symbols of theirs before it begins. What reads a
# controller's answers (libcurl, OpenSSL, Boost.JSON) stays shared, so that the
# system's updates reach it.

# header_library(TARGET HEADER): a target for the library with that header.
function(header_library target header)
  string(MAKE_C_IDENTIFIER "BRIVEL_${target}_HEADERS" folder)
  if(WIN32)
    set(${folder} ${PROJECT_BINARY_DIR}/include)  # windows_dependencies.cmake
  else()
    find_path(${folder} ${header} REQUIRED)
  endif()
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE ${${folder}})
endfunction()

header_library(tomlplusplus::tomlplusplus toml++/toml.h)
header_library(spdlog::spdlog spdlog/spdlog.h)
target_compile_definitions(spdlog::spdlog INTERFACE
  FMT_HEADER_ONLY SPDLOG_FMT_EXTERNAL)

add_library(boost_url STATIC cmake/boost_url.cpp)
target_link_libraries(boost_url PUBLIC Boost::headers PRIVATE brivel_options)
add_library(Boost::url ALIAS boost_url)
