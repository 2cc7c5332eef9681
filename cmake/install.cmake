# What `cmake --install` puts where. debian/ makes its packages by the same
# rules.
include(GNUInstallDirs)

# The suite's libraries are nobody else's, so they have a folder of their own,
# and the applications one below it.
set(libraries ${CMAKE_INSTALL_LIBDIR}/brivel)

file(RELATIVE_PATH from_program
     ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR}/brivel)
# The second place is that of the build tree. CMake would exchange it for the
# first one by itself, but leaves an empty place behind meanwhile, and that is
# the working directory.
set_target_properties(brivel PROPERTIES
  BUILD_WITH_INSTALL_RPATH ON
  INSTALL_RPATH "\$ORIGIN/${from_program}:\$ORIGIN/../lib")

install(TARGETS brivel RUNTIME)
install(PROGRAMS $<TARGET_FILE:record-local>
        DESTINATION ${CMAKE_INSTALL_BINDIR} RENAME brivel-record-local)
install(TARGETS brivel_suite EXPORT brivel LIBRARY DESTINATION ${libraries})
install(TARGETS brivel_transport_library LIBRARY DESTINATION ${libraries})
install(TARGETS syshealth check export
        LIBRARY DESTINATION ${libraries}/${BRIVEL_INSTALLED_MODULES})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/samples/rack-server
        DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)
foreach(example
    brivel.toml icinga2.conf nagios.cfg prometheus-rules.yml)
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/examples/${example}
          DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)
endforeach()
install(PROGRAMS ${PROJECT_SOURCE_DIR}/packaging/examples/slurm-health
        DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)

# What monitoring systems call, in the folder that all plug-ins share.
install(PROGRAMS ${PROJECT_SOURCE_DIR}/packaging/check_brivel
        DESTINATION lib/nagios/plugins)
# Off until someone enables the timer for a group.
install(FILES
  ${PROJECT_SOURCE_DIR}/packaging/systemd/brivel-export@.service
  ${PROJECT_SOURCE_DIR}/packaging/systemd/brivel-export@.timer
  DESTINATION lib/systemd/system)

# Completion, where each shell looks for it.
install(FILES ${PROJECT_SOURCE_DIR}/packaging/completion/brivel.bash
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
        RENAME brivel)
install(FILES ${PROJECT_SOURCE_DIR}/packaging/completion/_brivel
        DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
install(FILES ${PROJECT_SOURCE_DIR}/packaging/completion/brivel.fish
        DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)

# The settings' groups for ClusterShell.
install(FILES ${PROJECT_SOURCE_DIR}/packaging/clustershell/brivel.conf
        DESTINATION ${CMAKE_INSTALL_SYSCONFDIR}/clustershell/groups.conf.d)

# For applications that others write: the headers of the services, and what
# find_package(brivel) reads.
foreach(header
    app/entry_points.h
    health/alert.h
    health/dev_health.h
    health/orvane_type.h
    host/app_base.h
    host/arg_parser.h
    host/connect_info.h
    host/connection_info.h
    host/export.h
    host/log.h
    inventory/components.h
    result/brivel_result.h)
  cmake_path(GET header PARENT_PATH room)
  install(FILES ${PROJECT_SOURCE_DIR}/syshealth/${header}
          DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/brivel/syshealth/${room})
endforeach()
foreach(header report.h fields.h json.h words.h reader/reports.h)
  cmake_path(GET header PARENT_PATH room)
  install(FILES ${PROJECT_SOURCE_DIR}/suite/report/${header}
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/brivel/suite/report/${room})
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/docs/brivel-report.schema.json
        DESTINATION ${CMAKE_INSTALL_DOCDIR})
set_target_properties(brivel_suite PROPERTIES EXPORT_NAME suite)
target_include_directories(brivel_suite INTERFACE
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/brivel>)

include(CMakePackageConfigHelpers)
set(config ${PROJECT_BINARY_DIR}/sdk)
set(config_folder ${CMAKE_INSTALL_LIBDIR}/cmake/brivel)
set(BRIVEL_APPLICATIONS_DIR ${libraries}/${BRIVEL_INSTALLED_MODULES})
configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/packaging/sdk/brivel-config.cmake.in
  ${config}/brivel-config.cmake INSTALL_DESTINATION ${config_folder}
  NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(${config}/brivel-config-version.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${config}/brivel-config.cmake ${config}/brivel-config-version.cmake
  DESTINATION ${config_folder})
install(EXPORT brivel NAMESPACE brivel:: FILE brivel-targets.cmake
        DESTINATION ${config_folder})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/samples/application
        DESTINATION ${CMAKE_INSTALL_DOCDIR}-dev/examples)
