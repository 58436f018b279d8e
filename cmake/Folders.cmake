# One folder, one library; one test folder, one test program. The link graph below src/ is the architecture.

# New files are found by globbing; moc and uic must run again then, which the build alone does not notice.
function(tordillo_autogen name)
    get_target_property(sources ${name} SOURCES)
    set(list ${CMAKE_CURRENT_BINARY_DIR}/${name}_sources.txt)
    set(known "")
    if(EXISTS ${list})
        file(READ ${list} known)
    endif()
    if(NOT known STREQUAL sources)
        file(WRITE ${list} "${sources}")
        file(REMOVE ${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/timestamp)
    endif()
endfunction()

# tordillo_library(<name> LINKS <targets...>): the static library of the folder it is called in.
function(tordillo_library name)
    cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h *.ui *.qrc)
    add_library(${name} STATIC ${sources})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${ARG_LINKS})
    tordillo_precompiled(${name})
endfunction()

# tordillo_tests(<name> LINKS <targets...>): the test program of the folder it is called in.
# Every Test*.cpp holds one test class; TestMain runs them all, or the ones named on the command line.
function(tordillo_tests name)
    cmake_parse_arguments(ARG "" "" "LINKS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
    add_executable(${name} ${sources})
    target_link_libraries(${name} PRIVATE ${ARG_LINKS} test_support Qt6::Test)
    tordillo_precompiled(${name})
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8" TIMEOUT 240)
endfunction()

# One precompiled header of few core headers, owned by a target of its own, serves all targets.
function(tordillo_precompiled name)
    if(NOT TARGET tordillo_pch)
        file(WRITE ${PROJECT_BINARY_DIR}/pch.cpp "")
        add_library(tordillo_pch OBJECT ${PROJECT_BINARY_DIR}/pch.cpp)
        set_target_properties(tordillo_pch PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
        target_link_libraries(tordillo_pch PRIVATE Qt6::Core)
        target_precompile_headers(tordillo_pch PRIVATE
            <QString> <QStringList> <QDateTime> <QHash> <functional> <memory> <optional> <vector>)
    endif()
    target_precompile_headers(${name} REUSE_FROM tordillo_pch)
    tordillo_autogen(${name})
endfunction()
