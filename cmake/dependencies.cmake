# Libraries that the system is built on; every one is a Debian 12 package
# (tools/packages lists them). Nothing is downloaded at configure time.
include(header_libraries)
if(WIN32)
  include(windows_dependencies)
  return()
endif()

find_package(Boost 1.81 REQUIRED COMPONENTS json)
find_package(CURL 7.88 REQUIRED)
find_package(OpenSSL REQUIRED)
find_package(CLI11 REQUIRED)
find_package(prometheus-cpp REQUIRED)

# What speaks HTTP and TLS.
add_library(brivel_network INTERFACE)
target_link_libraries(brivel_network INTERFACE
  CURL::libcurl OpenSSL::SSL OpenSSL::Crypto)
