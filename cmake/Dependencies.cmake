# SPDX-FileCopyrightText: The OVSearch developers
# SPDX-License-Identifier: MIT
# What OVSearch is built with. All that is missing is told at once, with what to do about it.

set(missing "")
# ov_require(<variable that says whether it was found> <what> <Debian package> [<how to do without>])
macro(ov_require found what package)
    if(NOT ${found})
        string(APPEND missing "\n  ${what} not found: install ${package}")
        foreach(without IN ITEMS ${ARGN})
            string(APPEND missing " or pass ${without}")
        endforeach()
        string(APPEND missing ".")
    endif()
endmacro()

# ov_require_module(<prefix> <pkg-config module> <Debian package> [<how to do without>])
macro(ov_require_module prefix module package)
    if(PkgConfig_FOUND)
        pkg_check_modules(${prefix} QUIET IMPORTED_TARGET ${module})
        ov_require(${prefix}_FOUND ${module} ${package} ${ARGN})
    endif()
endmacro()

find_package(ICU QUIET COMPONENTS uc i18n)
ov_require(ICU_FOUND "ICU (upper-casing, collation)" libicu-dev)
find_package(CLI11 QUIET)
ov_require(CLI11_FOUND "CLI11 (the terminal's options)" libcli11-dev)
find_package(nlohmann_json QUIET)
ov_require(nlohmann_json_FOUND "nlohmann_json (find --format json, export)" nlohmann-json3-dev)
find_package(EXPAT QUIET)
ov_require(EXPAT_FOUND "Expat (reading an exported sheet back)" libexpat1-dev)
find_package(ZLIB QUIET)
ov_require(ZLIB_FOUND "zlib (checksums)" zlib1g-dev)
find_package(PkgConfig QUIET)
ov_require(PkgConfig_FOUND "pkg-config (finding the other libraries)" pkg-config)
ov_require_module(SNDFILE sndfile libsndfile1-dev)        # sound files, read and written
ov_require_module(SDL2 sdl2 libsdl2-dev)                  # sound output
ov_require_module(SOUNDTOUCH soundtouch libsoundtouch-dev) # playing faster or slower
ov_require_module(EBUR128 libebur128 libebur128-dev)       # how loud sound is
ov_require_module(XLSXWRITER xlsxwriter libxlsxwriter-dev) # export to spreadsheets
ov_require_module(SQLITE sqlite3 libsqlite3-dev)          # catalogues of large stores
if(OVSEARCH_POSTGRES)
    ov_require_module(POSTGRES libpq libpq-dev "-DOVSEARCH_POSTGRES=OFF for catalogues in files alone")
endif()
ov_require_module(MINIZIP minizip libminizip-dev)         # reading them back

if(OVSEARCH_WINDOWS)
    if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
        set(OV_EVDEV ON)
        ov_require_module(EVDEV libevdev libevdev-dev)    # foot pedals
    endif()
    set(qt_parts Widgets PrintSupport)
    if(OV_TESTS)
        list(APPEND qt_parts Test)
    endif()
    find_package(Qt6 6.4 QUIET COMPONENTS ${qt_parts})
    list(JOIN qt_parts ", " qt_parts)
    ov_require(Qt6_FOUND "Qt 6.4 (${qt_parts})" qt6-base-dev
        "-DOVSEARCH_WINDOWS=OFF for the engine and the terminal program alone")
    option(OVSEARCH_DBUS "Let other programs drive the player, where Qt has D-Bus" ON)
    if(OVSEARCH_DBUS AND Qt6_FOUND)
        find_package(Qt6DBus 6.4 QUIET)
    endif()
    if(Qt6DBus_FOUND)
        ov_require_module(DBUS dbus-1 libdbus-1-dev)
    endif()
endif()
if(OV_TESTS)
    find_package(GTest QUIET)
    ov_require(GTest_FOUND "GoogleTest" libgtest-dev "-DBUILD_TESTING=OFF")
endif()
if(OVSEARCH_BENCH)
    find_package(benchmark QUIET)
    ov_require(benchmark_FOUND "Google Benchmark" libbenchmark-dev "-DOVSEARCH_BENCH=OFF")
endif()

if(missing)
    message(FATAL_ERROR "OVSearch cannot be built yet:${missing}")
endif()
