# GoogleTest for a cross build, from the sources that Debian packages.
set(INSTALL_GTEST OFF CACHE BOOL "")
add_subdirectory(/usr/src/googletest ${PROJECT_BINARY_DIR}/googletest
                 EXCLUDE_FROM_ALL SYSTEM)
