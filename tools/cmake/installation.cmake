# Where `cmake --install` puts things. The host looks for module, guide and sample list beside its own program, so all of
# them share one folder.
include(GNUInstallDirs)
if(WIN32)
  set(EQREC_INSTALL_FOLDER ${CMAKE_INSTALL_BINDIR})
else()
  set(EQREC_INSTALL_FOLDER ${CMAKE_INSTALL_LIBDIR}/EquipmentRecordEditor)
endif()
set(CMAKE_INSTALL_RPATH_USE_LINK_PATH ON)  # finds a Qt outside the system's folders
install(FILES LICENSE CHANGELOG.md docs/host-interface.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
