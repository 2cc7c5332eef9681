# The libraries of dependencies.cmake as a cross build has them. Those that
# consist of headers are the same files as for Linux, seen through a folder of
# links, because the rest of /usr/include belongs to another system. The parts
# of Boost that have sources are compiled here.
set(headers ${PROJECT_BINARY_DIR}/include)
file(MAKE_DIRECTORY ${headers})
foreach(library boost CLI fmt spdlog toml++)
  find_path(BRIVEL_${library}_HEADERS ${library}
            PATHS /usr/include NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  file(CREATE_LINK ${BRIVEL_${library}_HEADERS}/${library} ${headers}/${library}
       SYMBOLIC)
endforeach()

# imported_headers(TARGET): a library that is in the folder.
function(imported_headers target)
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE
    ${PROJECT_BINARY_DIR}/include)
endfunction()

imported_headers(Boost::headers)
imported_headers(CLI11::CLI11)
target_compile_definitions(spdlog::spdlog INTERFACE SPDLOG_WCHAR_FILENAMES)

add_library(boost_json STATIC cmake/windows/boost_json.cpp)
target_link_libraries(boost_json PUBLIC Boost::headers)
add_library(Boost::json ALIAS boost_json)

# What speaks HTTP and TLS is part of the system.
add_library(brivel_network INTERFACE)
target_link_libraries(brivel_network INTERFACE winhttp crypt32 ws2_32)
