# Builds for 64-bit Windows with mingw-w64, its posix threads, and Debian's
# packages. What is built runs here under Wine, by tests/windows/wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(BRIVEL_TRIPLE x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${BRIVEL_TRIPLE}-gcc-posix)  # GoogleTest asks for one.
set(CMAKE_CXX_COMPILER ${BRIVEL_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${BRIVEL_TRIPLE}-windres)
set(CMAKE_OBJDUMP ${BRIVEL_TRIPLE}-objdump CACHE FILEPATH "")
set(CMAKE_STRIP ${BRIVEL_TRIPLE}-strip CACHE FILEPATH "")

set(CMAKE_FIND_ROOT_PATH /usr/${BRIVEL_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Host, suite and module share one runtime: with one each, an error code of
# one would not compare equal in another, and std::cout would have several
# states. Modules take flags of their own, apart from those of libraries.
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-shared-libgcc")
endforeach()

set(CMAKE_CROSSCOMPILING_EMULATOR
    ${CMAKE_CURRENT_LIST_DIR}/../tests/windows/wine)
