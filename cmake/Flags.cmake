# The one interface target that carries the flags of the house.
# Amounts are strict IEEE doubles: no contraction, no fast-math.
add_library(mint_flags INTERFACE)
if(MSVC)
  target_compile_options(mint_flags INTERFACE /utf-8 /W4 /WX /fp:strict /permissive-)
else()
  target_compile_options(
    mint_flags
    INTERFACE -Wall
              -Wextra
              -Wpedantic
              -Wshadow
              -Wnon-virtual-dtor
              -Woverloaded-virtual
              -Werror
              -ffp-contract=off)
endif()
# GCC 12 takes the inactive members of an optimised std::variant for uninitialised ones.
target_compile_options(
  mint_flags INTERFACE $<$<AND:$<CXX_COMPILER_ID:GNU>,$<NOT:$<CONFIG:Debug>>>:-Wno-maybe-uninitialized>)
target_compile_definitions(mint_flags INTERFACE QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS)
if(MINT_SANITIZE)
  target_compile_options(mint_flags INTERFACE -fsanitize=address,undefined
                                              -fno-sanitize-recover=undefined)
  target_link_options(mint_flags INTERFACE -fsanitize=address,undefined)
endif()
