# One build, two packages: the folder that stands anywhere (archives), and the program among a system's own (Debian).
if(CPACK_GENERATOR STREQUAL "DEB")
  set(CPACK_COMPONENTS_ALL system)
  set(CPACK_DEB_COMPONENT_INSTALL ON)
  set(CPACK_PACKAGING_INSTALL_PREFIX "/usr")
else()
  set(CPACK_COMPONENTS_ALL program)
  set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
endif()
