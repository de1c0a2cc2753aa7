# Install rules of the Redfish service (docs/REDFISH.md): zeda-redfishd and
# zeda-redfish-user in sbin, their man pages, and the systemd unit. Both
# programs link libPelkaUtility.so, which lives in the provider directory next
# to the module; they find it there through a RUNPATH relative to their own
# directory, so any prefix works (the way the module finds it through $ORIGIN).
# Included by cmake/Install.cmake, which sets ZEDA_INSTALL_PROVIDERDIR.
if(IS_ABSOLUTE "${ZEDA_INSTALL_PROVIDERDIR}")
  set(_zeda_providerdir_from_sbin "${ZEDA_INSTALL_PROVIDERDIR}")
else()
  file(RELATIVE_PATH _zeda_providerdir_from_sbin "/prefix/${CMAKE_INSTALL_SBINDIR}"
    "/prefix/${ZEDA_INSTALL_PROVIDERDIR}")
  set(_zeda_providerdir_from_sbin "$ORIGIN/${_zeda_providerdir_from_sbin}")
endif()
set_target_properties(zeda-redfishd zeda-redfish-user PROPERTIES
  INSTALL_RPATH "${_zeda_providerdir_from_sbin}")
install(TARGETS zeda-redfishd zeda-redfish-user RUNTIME DESTINATION ${CMAKE_INSTALL_SBINDIR})

install(FILES
  ${PROJECT_SOURCE_DIR}/docs/zeda-redfishd.8
  ${PROJECT_SOURCE_DIR}/docs/zeda-redfish-user.8
  DESTINATION ${CMAKE_INSTALL_MANDIR}/man8)

# A /usr installation (a package) puts the unit where systemd looks for the
# units of packages; any other prefix keeps it below the prefix.
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  set(ZEDA_INSTALL_UNITDIR "/lib/systemd/system")
else()
  set(ZEDA_INSTALL_UNITDIR "lib/systemd/system")
endif()
# The unit names the installed daemon and configuration file under the
# prefix of the installation (`cmake --install --prefix` may change it), so
# it is written at install time, straight into its place: installations of
# one build into several prefixes at once do not share a file.
if(IS_ABSOLUTE "${ZEDA_INSTALL_CONFIGDIR}")
  set(_zeda_unit_config "${ZEDA_INSTALL_CONFIGDIR}/pelka.json")
else()
  set(_zeda_unit_config "\${CMAKE_INSTALL_PREFIX}/${ZEDA_INSTALL_CONFIGDIR}/pelka.json")
endif()
if(IS_ABSOLUTE "${ZEDA_INSTALL_UNITDIR}")
  set(_zeda_unitdir "${ZEDA_INSTALL_UNITDIR}")
else()
  set(_zeda_unitdir "\${CMAKE_INSTALL_PREFIX}/${ZEDA_INSTALL_UNITDIR}")
endif()
install(CODE "
  set(ZEDA_UNIT_SBINDIR \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_SBINDIR}\")
  set(ZEDA_UNIT_CONFIG \"${_zeda_unit_config}\")
  set(_unit \"\$ENV{DESTDIR}${_zeda_unitdir}/zeda-redfishd.service\")
  message(STATUS \"Installing: \${_unit}\")
  configure_file(\"${PROJECT_SOURCE_DIR}/packaging/systemd/zeda-redfishd.service.in\"
    \"\${_unit}\" @ONLY)
  file(CHMOD \"\${_unit}\" PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
  list(APPEND CMAKE_INSTALL_MANIFEST_FILES \"\${_unit}\")")
