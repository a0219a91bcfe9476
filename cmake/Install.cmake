# What goes to the user. Component "program": one folder that can stand anywhere, `cmake --install build/release --prefix
# FOLDER --component program` (./run makes dist/ with it); the companies (Data/) stand in the same folder and are never part
# of it. Component "system": the program among a system's own, whose companies stand among the user's data. Both are packed
# by `cpack --config build/release/CPackConfig.cmake` (-G TGZ, -G DEB).
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON) # what is installed is built by name; tests and benchmarks need not be
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME program)

install(TARGETS hinata-mint mint-sample RUNTIME DESTINATION .)
install(FILES README.md DESTINATION .)
install(DIRECTORY src/shell/licences/ DESTINATION licences FILES_MATCHING PATTERN "*.txt")

# The words of the toolkit's own dialogs, for machines on which the toolkit stands without them.
get_target_property(_qmake Qt6::qmake IMPORTED_LOCATION)
execute_process(
  COMMAND ${_qmake} -query QT_INSTALL_TRANSLATIONS
  OUTPUT_VARIABLE _translations
  OUTPUT_STRIP_TRAILING_WHITESPACE)
install(FILES ${_translations}/qtbase_ja.qm DESTINATION translations OPTIONAL)

if(UNIX AND NOT APPLE)
  install(TARGETS hinata-mint RUNTIME DESTINATION bin COMPONENT system)
  install(FILES packaging/hinata-mint.desktop DESTINATION share/applications COMPONENT system)
  foreach(size 16 32 48 256)
    install(
      FILES src/widgets/icons/mint_${size}.png
      DESTINATION share/icons/hicolor/${size}x${size}/apps
      RENAME hinata-mint.png
      COMPONENT system)
  endforeach()
  install(
    FILES README.md packaging/copyright
    DESTINATION share/doc/hinata-mint
    COMPONENT system)
  install(
    DIRECTORY src/shell/licences/
    DESTINATION share/doc/hinata-mint/licences
    COMPONENT system
    FILES_MATCHING
    PATTERN "*.txt")
endif()

set(CPACK_PACKAGE_NAME hinata-mint)
set(CPACK_PACKAGE_VENDOR "ひなた堂")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "ひなた堂ミント（賞与配分）")
set(CPACK_PACKAGE_FILE_NAME "hinata-mint-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}")
set(CPACK_ARCHIVE_PROGRAM_FILE_NAME ${CPACK_PACKAGE_FILE_NAME})
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_STRIP_FILES ON)
if(WIN32)
  set(CPACK_GENERATOR ZIP)
else()
  set(CPACK_GENERATOR "TGZ;DEB")
endif()
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_LIST_DIR}/PackageByGenerator.cmake)
set(CPACK_PACKAGE_CONTACT "ひなた堂 <mint@hinatado.invalid>")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-translations-l10n, fonts-noto-cjk")
set(CPACK_DEBIAN_PACKAGE_SECTION office)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_SYSTEM_PACKAGE_NAME hinata-mint)
include(CPack)
