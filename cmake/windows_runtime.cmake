# The runtime's libraries that every program of ours needs beside it, without
# the compiler's debugging information, which is nine tenths of them.
set(BRIVEL_RUNTIME_LIBRARIES)
foreach(library libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
  execute_process(
    COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library}
    OUTPUT_VARIABLE found OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT EXISTS ${found})
    message(FATAL_ERROR "the compiler's ${library} is missing")
  endif()
  set(stripped ${PROJECT_BINARY_DIR}/runtime/${library})
  if(NOT EXISTS ${stripped} OR ${found} IS_NEWER_THAN ${stripped})
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/runtime)
    execute_process(COMMAND ${CMAKE_STRIP} --strip-unneeded ${found}
                            -o ${stripped}
                    COMMAND_ERROR_IS_FATAL ANY)
  endif()
  list(APPEND BRIVEL_RUNTIME_LIBRARIES ${stripped})
endforeach()

# put_runtime_into(DIRECTORY)
function(put_runtime_into directory)
  file(COPY ${BRIVEL_RUNTIME_LIBRARIES} DESTINATION ${directory})
endfunction()
