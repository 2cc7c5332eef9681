# What the program says of itself, for the few sources that do: BRIVEL_VERSION
# for those that are linked with brivel_version, and BRIVEL_COMMIT.
add_library(brivel_version INTERFACE)
target_compile_definitions(brivel_version INTERFACE
  BRIVEL_VERSION="${PROJECT_VERSION}")

# In a clone git knows the commit, as of the last time that the build was
# configured, which a commit is a reason for. Elsewhere commit.txt may.
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/commit.txt BRIVEL_COMMIT LIMIT_COUNT 1)
if(NOT BRIVEL_COMMIT MATCHES "^[0-9a-f]+$")
  set(BRIVEL_COMMIT "")
  execute_process(
    COMMAND git -C ${PROJECT_SOURCE_DIR} rev-parse HEAD --git-path logs/HEAD
    OUTPUT_VARIABLE known OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  if(known MATCHES "^([0-9a-f]+)\n(.+)$")
    set(BRIVEL_COMMIT ${CMAKE_MATCH_1})
    cmake_path(ABSOLUTE_PATH CMAKE_MATCH_2
      BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE moves)
    if(EXISTS ${moves})
      set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${moves})
    endif()
  endif()
endif()
if(BRIVEL_COMMIT)
  string(SUBSTRING ${BRIVEL_COMMIT} 0 12 BRIVEL_COMMIT)
else()
  set(BRIVEL_COMMIT unknown)
endif()
