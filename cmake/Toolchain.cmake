# What holds for every target: language, warnings, strict Qt, and the tools that make builds quick.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE RelWithDebInfo)
endif()

option(TORDILLO_STRICT "Warnings are errors" OFF)
set(TORDILLO_SANITIZE "" CACHE STRING "Sanitizers to build with, for example address,undefined")

if(MSVC)
    add_compile_options(/W4 /utf-8)
else()
    add_compile_options(-Wall -Wextra -Wconversion -Wshadow -fpch-preprocess)
    if(TORDILLO_STRICT)
        add_compile_options(-Werror)
    endif()
endif()
if(TORDILLO_SANITIZE)
    add_compile_options(-fsanitize=${TORDILLO_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
    add_link_options(-fsanitize=${TORDILLO_SANITIZE})
endif()

option(TORDILLO_COVERAGE "Count which lines run" OFF)
if(TORDILLO_COVERAGE)
    add_compile_options(--coverage -Og -fprofile-update=atomic)
    add_link_options(--coverage)
endif()

option(TORDILLO_FUZZ "Fuzz targets too; needs clang" OFF)
if(TORDILLO_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

add_compile_definitions(
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING
    QT_NO_CONTEXTLESS_CONNECT QT_NO_FOREACH QT_NO_KEYWORDS QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_USE_QSTRINGBUILDER QT_STRICT_ITERATORS QT_DISABLE_DEPRECATED_BEFORE=0x060400)

find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CCACHE})
endif()
find_program(MOLD mold)
if(MOLD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_link_options(-fuse-ld=mold)
endif()
