# What `cmake --install` puts where, and what find_package(Vorlink) finds there.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Vorlink)
set(simulator_dir ${CMAKE_INSTALL_DATADIR}/vorlink)

install(FILES ${vorlink_public_headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vorlink)
install(FILES README.md CHANGELOG.md NOTICE.md SECURITY.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES simulator/simulator.manifest simulator/VorlinkUseSimulator.cmake DESTINATION ${simulator_dir})

set_target_properties(vorlink PROPERTIES EXPORT_NAME Vorlink)
set_target_properties(vorlink_c PROPERTIES EXPORT_NAME C)
set_target_properties(vorlink_simulator PROPERTIES EXPORT_NAME Simulator)
install(TARGETS vorlink vorlink_c vorlink_simulator EXPORT VorlinkTargets INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT VorlinkTargets NAMESPACE Vorlink:: DESTINATION ${package_dir})

# Not among the programs that the system looks for by their names: Windows has a pnputil of its own.
install(TARGETS pnputil RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}/vorlink)
install(TARGETS vorlinkctl)
install(FILES host/vorlinkctl.exe.manifest DESTINATION ${CMAKE_INSTALL_BINDIR})
set(reference_dir ${PROJECT_BINARY_DIR}/host/reference)
install(FILES ${reference_dir}/bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME vorlinkctl)
install(FILES ${reference_dir}/vorlinkctl.ps1 DESTINATION ${simulator_dir})
install(FILES ${reference_dir}/vorlinkctl.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

configure_package_config_file(
  cmake/VorlinkConfig.cmake.in VorlinkConfig.cmake
  INSTALL_DESTINATION ${package_dir}
  PATH_VARS simulator_dir)
write_basic_package_version_file(VorlinkConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/VorlinkConfig.cmake ${PROJECT_BINARY_DIR}/VorlinkConfigVersion.cmake
        DESTINATION ${package_dir})

# The way from the file back to the prefix, which can be moved.
file(RELATIVE_PATH vorlink_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" vorlink_prefix ${vorlink_prefix})
foreach(name IN ITEMS vorlink vorlink_c)
  configure_file(cmake/vorlink.pc.in ${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
