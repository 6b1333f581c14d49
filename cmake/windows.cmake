# Settings of the Windows build, and the application folder that it fills.

enable_language(RC)
string(REPLACE g++ gcc CMAKE_C_COMPILER ${CMAKE_CXX_COMPILER}) # the one that belongs to it, for examples in C
enable_language(C)

# x87 arithmetic keeps more digits than a float has, so results would depend on what the compiler spills: hence SSE.
# Texts that reach the A functions are Windows-1252.
# GCC 12 sees overlapping copies where strings are joined and optimised hard, and there are none: hence no-restrict.
add_compile_options("$<$<COMPILE_LANGUAGE:CXX>:-msse2;-mfpmath=sse;-fexec-charset=CP1252;-Wno-restrict>")
# Windows 7: newer functions are not declared.
add_compile_definitions(WINVER=0x0601 _WIN32_WINNT=0x0601 NOMINMAX)

# Nothing but system DLLs is imported. The loader may put the modules anywhere and lets no data be executed. They say
# which system they need, and no time of their making: the same sources give the same bytes.
add_link_options(-static
    -Wl,--dynamicbase,--nxcompat,--no-insert-timestamp
    -Wl,--major-os-version=6,--minor-os-version=1,--major-subsystem-version=6,--minor-subsystem-version=1)

configure_file(${CMAKE_CURRENT_LIST_DIR}/Version.h.in ${PROJECT_BINARY_DIR}/include/Version.h @ONLY)
include_directories(${PROJECT_BINARY_DIR}/include)
# Ninja does not see what a resource script includes.
function(add_resource_inputs script)
    set_source_files_properties(${script} PROPERTIES OBJECT_DEPENDS
        "${PROJECT_BINARY_DIR}/include/Version.h;${PROJECT_SOURCE_DIR}/cmake/VersionResource.rc;${ARGN}")
endfunction()

link_libraries(gdiplus comctl32 comdlg32 msimg32 ws2_32 iphlpapi winmm tapi32 ole32 shell32 user32 gdi32)

# Programs run from the application folder: everything they need lies there, laid out as it is installed.
set(APP_DIR ${PROJECT_BINARY_DIR}/app)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${APP_DIR})
set(CMAKE_SHARED_LIBRARY_PREFIX "")

# What nearly every file reads of the system and of the standard library is compiled once, and so it is for the tests,
# which add their framework and are not optimised: most of them runs once, and compiling them was a third of all.
# A file still includes what it uses: CMAKE_DISABLE_PRECOMPILE_HEADERS builds without this. In precompiled headers GCC 12
# also sees copies beyond the end of strings, which it does not elsewhere.
function(use_precompiled_headers target owner)
    if(target STREQUAL owner)
        target_precompile_headers(${owner} PRIVATE ${ARGN})
    else()
        target_precompile_headers(${target} REUSE_FROM ${owner})
    endif()
    if(NOT CMAKE_DISABLE_PRECOMPILE_HEADERS)
        target_compile_options(${target} PRIVATE
            "$<$<COMPILE_LANGUAGE:CXX>:-Wno-array-bounds;-Wno-stringop-overflow;-Wno-stringop-overread>")
    endif()
endfunction()

set(STANDARD_HEADERS <algorithm> <memory> <optional> <string> <string_view> <unordered_map> <utility> <vector>)
set(SYSTEM_HEADERS <winsock2.h> <windows.h> <commctrl.h> ${STANDARD_HEADERS})
add_library(system_headers OBJECT ${CMAKE_CURRENT_LIST_DIR}/SystemHeaders.cpp)
use_precompiled_headers(system_headers system_headers ${SYSTEM_HEADERS})

function(precompile_system_headers target)
    use_precompiled_headers(${target} system_headers)
endfunction()

# Of a target that is linked to test_support.
function(precompile_test_headers target)
    target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-O0>)
    use_precompiled_headers(${target} test_support ${SYSTEM_HEADERS} <doctest/doctest.h>
        "\"tests/windows/TestPanel.h\"")
endfunction()

set(staged)
file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/app ${PROJECT_SOURCE_DIR}/app/*)
foreach(file IN LISTS files)
    add_custom_command(
        OUTPUT ${APP_DIR}/${file}
        COMMAND ${CMAKE_COMMAND} -E copy ${PROJECT_SOURCE_DIR}/app/${file} ${APP_DIR}/${file}
        DEPENDS ${PROJECT_SOURCE_DIR}/app/${file}
        COMMENT "Staging ${file}"
        VERBATIM)
    list(APPEND staged ${APP_DIR}/${file})
endforeach()
add_custom_target(stage ALL DEPENDS ${staged})
