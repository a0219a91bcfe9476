# SQLite3 Multiple Ciphers: the amalgamation of a pinned npm package, fetched once with npm, checked by hash,
# compiled once with hidden names so that it never meets another SQLite that Qt may load.
set(MINT_SQLITE3MC_PACKAGE better-sqlite3-multiple-ciphers)
set(MINT_SQLITE3MC_VERSION 12.11.1)
set(MINT_SQLITE3MC_SHA512
    a46ef6fb7564522a67998c782f042aa0e5cd1b6089d479660eb96faa0afbc501e0b04f9ccf9ac064489a2479d42931da19f1a27e0800fc2d12bfda99954adfa3
)
set(MINT_SQLITE3MC_SOURCE_SHA256
    670d8d053176b53a68073b168f8e68fb72db67bdf964a0eb130338e9391198b9)
set(MINT_SQLITE3MC_TARBALL
    ""
    CACHE FILEPATH "An already downloaded tarball of ${MINT_SQLITE3MC_PACKAGE}")

set(_cache "$ENV{XDG_CACHE_HOME}")
if(NOT _cache)
  set(_cache "$ENV{HOME}/.cache")
endif()
set(_cache "${_cache}/hinatado-mint")
set(_mint_sqlite_dir ${_cache}/sqlite3mc-${MINT_SQLITE3MC_VERSION})
set(_mint_sqlite_c ${_mint_sqlite_dir}/package/deps/sqlite3/sqlite3.c)

function(_mint_sha_matches file algorithm expected result)
  set(_have "")
  if(EXISTS "${file}")
    file(${algorithm} "${file}" _have)
  endif()
  if(_have STREQUAL "${expected}")
    set(${result} TRUE PARENT_SCOPE)
  else()
    set(${result} FALSE PARENT_SCOPE)
  endif()
endfunction()

_mint_sha_matches(${_mint_sqlite_c} SHA256 ${MINT_SQLITE3MC_SOURCE_SHA256} _ready)
if(NOT _ready)
  file(MAKE_DIRECTORY "${_cache}")
  set(_tarball "${MINT_SQLITE3MC_TARBALL}")
  if(NOT _tarball)
    set(_tarball "${_cache}/${MINT_SQLITE3MC_PACKAGE}-${MINT_SQLITE3MC_VERSION}.tgz")
    _mint_sha_matches("${_tarball}" SHA512 ${MINT_SQLITE3MC_SHA512} _fetched)
    if(NOT _fetched)
      message(STATUS "Fetching ${MINT_SQLITE3MC_PACKAGE} ${MINT_SQLITE3MC_VERSION}")
      find_program(NPM_COMMAND npm REQUIRED)
      execute_process(
        COMMAND
          ${NPM_COMMAND} pack ${MINT_SQLITE3MC_PACKAGE}@${MINT_SQLITE3MC_VERSION} --ignore-scripts
          --loglevel=error --fetch-retries=1 --pack-destination "${_cache}"
        RESULT_VARIABLE _status
        OUTPUT_QUIET)
      if(NOT _status EQUAL 0)
        message(FATAL_ERROR "npm could not fetch ${MINT_SQLITE3MC_PACKAGE}; set "
                            "MINT_SQLITE3MC_TARBALL to a downloaded tarball")
      endif()
    endif()
  endif()
  _mint_sha_matches("${_tarball}" SHA512 ${MINT_SQLITE3MC_SHA512} _fetched)
  if(NOT _fetched)
    message(FATAL_ERROR "${_tarball} is not the pinned tarball (SHA-512 differs)")
  endif()
  # Unpacked aside and then renamed, so that two configurations at once never see half a source.
  string(RANDOM LENGTH 12 _aside)
  file(ARCHIVE_EXTRACT INPUT "${_tarball}" DESTINATION "${_cache}/unpack-${_aside}" PATTERNS
       "package/deps/sqlite3/*")
  file(REMOVE_RECURSE "${_mint_sqlite_dir}")
  file(RENAME "${_cache}/unpack-${_aside}" "${_mint_sqlite_dir}")
  _mint_sha_matches(${_mint_sqlite_c} SHA256 ${MINT_SQLITE3MC_SOURCE_SHA256} _ready)
  if(NOT _ready)
    message(FATAL_ERROR "sqlite3.c differs from the pinned source")
  endif()
endif()

# The cipher's layer drops every error of a read but the end of the file. A rollback that cannot read its journal would
# then count as done: half a transaction stays in the file, and the journal that could take it back goes.
set(_mint_sqlite_mended ${CMAKE_BINARY_DIR}/sqlite3mc/${MINT_SQLITE3MC_VERSION}/sqlite3.c)
if(NOT EXISTS "${_mint_sqlite_mended}" OR "${CMAKE_CURRENT_LIST_FILE}" IS_NEWER_THAN "${_mint_sqlite_mended}")
  file(READ "${_mint_sqlite_c}" _text)
  string(REGEX MATCHALL "if \\(rc == SQLITE_IOERR_SHORT_READ\\)" _found "${_text}")
  list(LENGTH _found _count)
  if(NOT _count EQUAL 2)
    message(FATAL_ERROR "sqlite3.c has ${_count} places to mend, not two")
  endif()
  string(REPLACE "if (rc == SQLITE_IOERR_SHORT_READ)" "if (rc != SQLITE_OK)" _text "${_text}")
  file(WRITE "${_mint_sqlite_mended}.new" "${_text}")
  file(RENAME "${_mint_sqlite_mended}.new" "${_mint_sqlite_mended}")
endif()

add_library(sqlite3mc STATIC ${_mint_sqlite_mended})
set_target_properties(sqlite3mc PROPERTIES C_VISIBILITY_PRESET hidden AUTOMOC OFF AUTORCC OFF
                                           UNITY_BUILD OFF POSITION_INDEPENDENT_CODE ON)
target_include_directories(sqlite3mc SYSTEM PUBLIC ${_mint_sqlite_dir}/package/deps/sqlite3)
target_compile_definitions(
  sqlite3mc
  PRIVATE SQLITE_DQS=0
          SQLITE_THREADSAFE=1
          SQLITE_TEMP_STORE=2
          SQLITE_ENABLE_STAT4
          SQLITE_ENABLE_COLUMN_METADATA
          SQLITE_ENABLE_MATH_FUNCTIONS
          SQLITE_LIKE_DOESNT_MATCH_BLOBS
          SQLITE_SECURE_DELETE=1
          SQLITE_OMIT_LOAD_EXTENSION
          SQLITE_OMIT_SHARED_CACHE
          SQLITE_OMIT_DEPRECATED
          SQLITE_MAX_ATTACHED=10)
if(NOT MSVC)
  # Always optimised: every test and every sanitizer run goes through it, and it is not ours to debug.
  target_compile_options(sqlite3mc PRIVATE -w -O2)
endif()
find_package(Threads REQUIRED)
target_link_libraries(sqlite3mc PUBLIC Threads::Threads ${CMAKE_DL_LIBS} PRIVATE mint_hardening)
