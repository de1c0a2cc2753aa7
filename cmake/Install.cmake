# Install rules: the provider directory (the module and its companion
# libPelkaUtility.so, found next to it through $ORIGIN), zeda-cim and
# zeda-register, the class MOF and both registrations, an example
# configuration file and inventory, and the man pages.
include(GNUInstallDirs)

set(ZEDA_INSTALL_PROVIDERDIR "${CMAKE_INSTALL_LIBDIR}/cmpi" CACHE PATH
  "Provider directory of the object manager (relative to the prefix, or absolute)")
set(ZEDA_INSTALL_DATADIR "${CMAKE_INSTALL_DATADIR}/zeda-diskdrivelite")
# A /usr installation (a package) keeps its configuration in /etc; any other
# prefix keeps it below the prefix.
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  set(ZEDA_INSTALL_CONFIGDIR "${CMAKE_INSTALL_FULL_SYSCONFDIR}/pelka")
else()
  set(ZEDA_INSTALL_CONFIGDIR "${CMAKE_INSTALL_SYSCONFDIR}/pelka")
endif()

# The registrations, derived from the module's list of served classes.
add_subdirectory(${PROJECT_SOURCE_DIR}/schema ${PROJECT_BINARY_DIR}/schema)

install(TARGETS ZEDA_DiskDriveLite PelkaUtility
  LIBRARY DESTINATION ${ZEDA_INSTALL_PROVIDERDIR} NAMELINK_SKIP)
install(TARGETS zeda-cim RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

# An installed zeda-cim loads the installed module by default, wherever the
# prefix is: the path from the program's directory to the module.
if(IS_ABSOLUTE "${ZEDA_INSTALL_PROVIDERDIR}")
  set(_zeda_module_from_bin "${ZEDA_INSTALL_PROVIDERDIR}/libZEDA_DiskDriveLite.so")
else()
  file(RELATIVE_PATH _zeda_module_from_bin "/prefix/${CMAKE_INSTALL_BINDIR}"
    "/prefix/${ZEDA_INSTALL_PROVIDERDIR}/libZEDA_DiskDriveLite.so")
endif()
target_compile_definitions(zeda-cim PRIVATE ZEDA_INSTALLED_MODULE="${_zeda_module_from_bin}")

# zeda-register finds the registrations and names the provider directory
# relative to its own directory.
file(RELATIVE_PATH ZEDA_DATADIR_FROM_BIN "/prefix/${CMAKE_INSTALL_BINDIR}" "/prefix/${ZEDA_INSTALL_DATADIR}")
if(IS_ABSOLUTE "${ZEDA_INSTALL_PROVIDERDIR}")
  set(ZEDA_PROVIDERDIR_FROM_BIN "${ZEDA_INSTALL_PROVIDERDIR}")
else()
  file(RELATIVE_PATH ZEDA_PROVIDERDIR_FROM_BIN "/prefix/${CMAKE_INSTALL_BINDIR}"
    "/prefix/${ZEDA_INSTALL_PROVIDERDIR}")
endif()
configure_file(${PROJECT_SOURCE_DIR}/packaging/zeda-register.in
  ${PROJECT_BINARY_DIR}/packaging/zeda-register @ONLY)
install(PROGRAMS ${PROJECT_BINARY_DIR}/packaging/zeda-register DESTINATION ${CMAKE_INSTALL_BINDIR})

install(FILES
  ${PROJECT_SOURCE_DIR}/schema/ZEDA_DiskDriveLite.mof
  ${PROJECT_SOURCE_DIR}/schema/ZEDA_DiskDriveLite.reg
  ${PROJECT_SOURCE_DIR}/schema/ZEDA_DiskDriveLite-pegasus.mof
  ${PROJECT_SOURCE_DIR}/examples/inventory.json
  DESTINATION ${ZEDA_INSTALL_DATADIR})
install(FILES ${PROJECT_SOURCE_DIR}/packaging/pelka.json DESTINATION ${ZEDA_INSTALL_CONFIGDIR})
install(FILES
  ${PROJECT_SOURCE_DIR}/docs/zeda-cim.1
  ${PROJECT_SOURCE_DIR}/docs/zeda-register.1
  DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

# The Redfish service: its programs, man pages and systemd unit.
include(${CMAKE_CURRENT_LIST_DIR}/InstallRedfish.cmake)
