# Precompiled headers of the toolkit, for builds from nothing: parsing it is half of the compiler's work. Off by
# default, since a cache of object files (ccache) serves editing better; the presets that are built whole turn it on.
option(MINT_PCH "Precompile the toolkit's headers" OFF)

if(MINT_PCH)
  file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/pch.cpp CONTENT "")
  function(_mint_pch name)
    cmake_parse_arguments(A "" "" "LINK;HEADERS" ${ARGN})
    add_library(mint_pch_${name} OBJECT ${CMAKE_BINARY_DIR}/pch.cpp)
    set_target_properties(mint_pch_${name} PROPERTIES AUTOMOC OFF AUTORCC OFF)
    target_link_libraries(mint_pch_${name} PRIVATE mint_flags ${A_LINK})
    target_precompile_headers(mint_pch_${name} PRIVATE ${A_HEADERS})
  endfunction()
  set(_std <algorithm> <array> <functional> <map> <memory> <optional> <string> <vector>)
  _mint_pch(
    logic
    LINK Qt6::Core
    HEADERS ${_std} <QDate> <QFile> <QHash> <QJsonArray> <QRegularExpression> <QString> <QStringList>)
  _mint_pch(
    screens
    LINK Qt6::Widgets
    HEADERS ${_std} <QDate> <QHash> <QString> <QStringList> <QtWidgets>)
endif()

# mint_precompile(target logic|screens)
function(mint_precompile target kind)
  if(MINT_PCH)
    target_precompile_headers(${target} REUSE_FROM mint_pch_${kind})
  endif()
endfunction()
