# A ZIP that runs where it is unpacked: cpack in the build's folder makes it.
configure_file(${CMAKE_CURRENT_LIST_DIR}/README-windows.txt
               ${PROJECT_BINARY_DIR}/README.txt @ONLY NEWLINE_STYLE CRLF)
install(TARGETS brivel RUNTIME DESTINATION bin)
install(TARGETS brivel_suite RUNTIME DESTINATION bin)
install(TARGETS syshealth export LIBRARY DESTINATION lib/brivel)
install(PROGRAMS ${BRIVEL_RUNTIME_LIBRARIES} DESTINATION bin)
install(FILES ${PROJECT_BINARY_DIR}/README.txt DESTINATION .)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/samples/rack-server
        DESTINATION samples)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME brivel-${PROJECT_VERSION}-windows-x86_64)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/package)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
include(CPack)
