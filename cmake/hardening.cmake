# What makes a fault in the programs harder to abuse, and keeps the folder that
# they are built in out of them: the same flags as Debian's packages get, and
# control-flow protection where the processor has it. Release builds only;
# tests/package/check_hardening reads what came out.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

# Not an option of the targets: tests are not optimised, and take it back.
string(APPEND CMAKE_CXX_FLAGS_RELEASE " -D_FORTIFY_SOURCE=2")

target_compile_options(brivel_options INTERFACE
  -fstack-protector-strong -Wformat -Werror=format-security
  -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=
  -ffile-prefix-map=${PROJECT_BINARY_DIR}/=)
foreach(flag -fcf-protection -fstack-clash-protection)
  string(MAKE_C_IDENTIFIER "BRIVEL_HAS${flag}" known)
  check_cxx_compiler_flag(${flag} ${known})
  if(${known})
    target_compile_options(brivel_options INTERFACE ${flag})
  endif()
endforeach()

# Everything is bound before the program starts, and read-only from then on.
target_link_options(brivel_options INTERFACE
  LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack)
