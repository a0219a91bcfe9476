# What goes to the user, as one folder that can stand anywhere: `cmake --install build/release --prefix FOLDER` (./run
# makes dist/ with it), or packed by `cpack --config build/release/CPackConfig.cmake`. The companies (Data/) stand in the
# same folder and are never part of it.
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

set(CPACK_PACKAGE_NAME hinata-mint)
set(CPACK_PACKAGE_VENDOR "ひなた堂")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "ひなた堂ミント（賞与配分）")
set(CPACK_PACKAGE_FILE_NAME "hinata-mint-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}")
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_STRIP_FILES ON)
if(WIN32)
  set(CPACK_GENERATOR ZIP)
else()
  set(CPACK_GENERATOR TGZ)
endif()
include(CPack)
