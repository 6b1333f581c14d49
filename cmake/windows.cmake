# Settings of the Windows build, and the application folder that it fills.

enable_language(RC)

# x87 arithmetic keeps more digits than a float has, so results would depend on what the compiler spills: hence SSE.
# Texts that reach the A functions are Windows-1252.
# GCC 12 sees overlapping copies where strings are joined and optimised hard, and there are none: hence no-restrict.
add_compile_options("$<$<COMPILE_LANGUAGE:CXX>:-msse2;-mfpmath=sse;-fexec-charset=CP1252;-Wno-restrict>")
add_compile_definitions(WINVER=0x0602 _WIN32_WINNT=0x0602 NOMINMAX)

# Nothing but system DLLs is imported.
add_link_options(-static)
link_libraries(gdiplus comctl32 comdlg32 msimg32 ws2_32 iphlpapi winmm tapi32 ole32 shell32 user32 gdi32)

# Programs run from the application folder: everything they need lies there, laid out as it is installed.
set(APP_DIR ${PROJECT_BINARY_DIR}/app)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${APP_DIR})
set(CMAKE_SHARED_LIBRARY_PREFIX "")

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
