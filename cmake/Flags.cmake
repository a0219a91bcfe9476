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
              -Wconversion
              -Wsign-conversion
              -Wnon-virtual-dtor
              -Woverloaded-virtual
              -Werror
              -ffp-contract=off)
endif()
# GCC 12 takes the inactive members of an optimised std::variant for uninitialised ones.
target_compile_options(
  mint_flags INTERFACE $<$<AND:$<CXX_COMPILER_ID:GNU>,$<NOT:$<CONFIG:Debug>>>:-Wno-maybe-uninitialized>)
target_compile_definitions(mint_flags INTERFACE QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS)
# A broken rule of the toolkit's or the library's interface stops every build but the one for the user. (The toolkit
# takes every build type but Debug for one without its assertions.)
target_compile_definitions(
  mint_flags INTERFACE $<$<NOT:$<CONFIG:Release>>:QT_FORCE_ASSERTS;_GLIBCXX_ASSERTIONS>)

# Against memory faults that a damaged or forged file may bring about: they end the program instead of going on. Files are
# read by the engine of the database too, so it is built with the same flags.
add_library(mint_hardening INTERFACE)
if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  target_compile_options(mint_hardening INTERFACE -fstack-protector-strong -fstack-clash-protection)
  target_link_options(
    mint_hardening
    INTERFACE
    -Wl,-z,relro
    -Wl,-z,now
    -Wl,-z,noexecstack
    $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-pie>)
  if(NOT MINT_SANITIZE) # it checks the same calls, and more of them
    target_compile_options(
      mint_hardening INTERFACE $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>)
  endif()
endif()
target_link_libraries(mint_flags INTERFACE mint_hardening)

if(MINT_SANITIZE)
  target_compile_options(mint_flags INTERFACE -fsanitize=address,undefined
                                              -fno-sanitize-recover=undefined)
  target_link_options(mint_flags INTERFACE -fsanitize=address,undefined)
endif()
