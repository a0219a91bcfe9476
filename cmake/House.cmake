# A room of the house is a folder under src/. Its files named frm* and ui_* are screens and what screens share, and link
# Qt Widgets; everything else is logic and links Qt Core only. A room sees what it is given here and nothing else.

function(_mint_room target base)
  cmake_parse_arguments(A "" "" "SOURCES;LINK" ${ARGN})
  if(NOT A_SOURCES)
    add_library(${target} INTERFACE)
    target_include_directories(${target} INTERFACE ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(${target} INTERFACE ${base} ${A_LINK})
    return()
  endif()
  add_library(${target} STATIC ${A_SOURCES})
  # The toolkit's code generator does not look at a header that is new on its own.
  set(headers ${A_SOURCES})
  list(FILTER headers INCLUDE REGEX "h$")
  set_target_properties(${target} PROPERTIES AUTOGEN_TARGET_DEPENDS "${headers}")
  target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(
    ${target}
    PUBLIC ${base} ${A_LINK}
    PRIVATE mint_flags)
  if(base STREQUAL Qt6::Core)
    mint_precompile(${target} logic)
  else()
    mint_precompile(${target} screens)
  endif()
endfunction()

# mint_logic(name LINK libs...): library <name>_logic of the files that are no screens.
function(mint_logic name)
  cmake_parse_arguments(A "" "" "LINK" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
  list(FILTER sources EXCLUDE REGEX "/(frm|ui_)[^/]*$")
  set(units ${sources})
  list(FILTER units INCLUDE REGEX "cpp$")
  if(NOT units)
    set(sources "")
  endif()
  _mint_room(${name}_logic Qt6::Core SOURCES ${sources} LINK ${A_LINK})
endfunction()

# mint_screens(name [TARGET target] LINK libs...): library <name> (or <target>) of the files frm* and ui_*.
function(mint_screens name)
  cmake_parse_arguments(A "" "TARGET" "LINK" ${ARGN})
  if(NOT A_TARGET)
    set(A_TARGET ${name})
  endif()
  file(GLOB sources CONFIGURE_DEPENDS frm*.cpp frm*.h ui_*.cpp ui_*.h *.qrc)
  set(units ${sources})
  list(FILTER units INCLUDE REGEX "cpp$")
  if(NOT units)
    set(sources "")
  endif()
  _mint_room(${A_TARGET} Qt6::Widgets SOURCES ${sources} LINK ${A_LINK})
endfunction()
