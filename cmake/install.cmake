# SPDX-License-Identifier: MIT
# What `cmake --install` puts where, and how another build finds it: the CMake
# package swctl (targets swctl::swctl, swctl::static, swctl::vchip,
# swctl::probe) and the pkg-config modules swctl, swctl-vchip, swctl-probe.
include(CMakePackageConfigHelpers)

set(swctl_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/swctl)

set_target_properties(swctl-vchip PROPERTIES EXPORT_NAME vchip)
set_target_properties(swctl-probe PROPERTIES EXPORT_NAME probe)
install(TARGETS swctl swctl_static swctl-vchip swctl-probe EXPORT swctl)
install(TARGETS swctl_program vchipctl swctl-replay swctl-faults)
if(TARGET vchipd)
  install(TARGETS vchipd)
  install(FILES packaging/vchipd@.service DESTINATION lib/systemd/system)
  # Where Wireshark looks for further interfaces.
  install(PROGRAMS vchip/extcap/swctl-extcap DESTINATION ${CMAKE_INSTALL_LIBDIR}/wireshark/extcap)
endif()
install(EXPORT swctl NAMESPACE swctl:: DESTINATION ${swctl_package_dir} FILE swctl-targets.cmake)
configure_package_config_file(cmake/swctl-config.cmake.in
  ${PROJECT_BINARY_DIR}/swctl-config.cmake INSTALL_DESTINATION ${swctl_package_dir})
# Before 1.0 a minor release may change the interface.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/swctl-config-version.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/swctl-config.cmake
  ${PROJECT_BINARY_DIR}/swctl-config-version.cmake DESTINATION ${swctl_package_dir})

# Their prefix is where they lie, wherever the tree was installed to.
file(RELATIVE_PATH swctl_pc_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" swctl_pc_prefix "${swctl_pc_prefix}")
foreach(module swctl swctl-vchip swctl-probe)
  configure_file(cmake/${module}.pc.in ${PROJECT_BINARY_DIR}/${module}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${module}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

install(DIRECTORY include/swctl DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY vchip/include/swctl-vchip DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY probe/include/swctl-probe DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES shell/completion/swctl vchip/completion/vchipctl vchip/completion/vchipd replay/completion/swctl-replay
  faults/completion/swctl-faults
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES shell/completion/_swctl vchip/completion/_vchipctl
  DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
# fish looks for a file of the command's name.
install(FILES shell/completion/swctl.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
foreach(program vchipctl vchipd swctl-replay swctl-faults)
  install(FILES vchip/completion/vchipctl.fish
    DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d RENAME ${program}.fish)
endforeach()
install(FILES docs/swctl.schema.json DESTINATION ${CMAKE_INSTALL_DATADIR}/swctl)
# The pages have the folders of the source tree, so that their links hold; but the
# headers are not among them.
file(RELATIVE_PATH swctl_doc_to_include /${CMAKE_INSTALL_DOCDIR} /${CMAKE_INSTALL_INCLUDEDIR})
file(READ README.md swctl_readme)
string(REPLACE "](include/" "](${swctl_doc_to_include}/" swctl_readme "${swctl_readme}")
file(CONFIGURE OUTPUT README.md CONTENT "${swctl_readme}" @ONLY)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS README.md)
install(FILES ${PROJECT_BINARY_DIR}/README.md CHANGELOG.md CONTRIBUTING.md LICENSE
  DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES examples/port_status.c examples/linkwatch.c
  DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)
install(DIRECTORY examples/containerlab examples/kubernetes
  DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)
install(FILES cmake/mips-linux-gnu.cmake DESTINATION ${CMAKE_INSTALL_DOCDIR}/cmake)
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs FILES_MATCHING PATTERN "*.md"
  PATTERN "*.svg" PATTERN "*.schema.json" PATTERN "man" EXCLUDE PATTERN "reference" EXCLUDE)

# All that is installed, and nothing else.
add_custom_target(swctl_installed
  DEPENDS swctl swctl_static swctl-vchip swctl-probe swctl_program vchipctl swctl-replay
    swctl-faults)
if(TARGET vchipd)
  add_dependencies(swctl_installed vchipd)
endif()
if(TARGET swctl_manual)
  add_dependencies(swctl_installed swctl_manual)
endif()
