# Settings of the native build: the window-free code under the sanitizers. Clang, because it also brings the fuzzer.

if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    message(FATAL_ERROR "The native build needs clang: cmake --preset native")
endif()

set(sanitizers -fsanitize=address,undefined,float-cast-overflow -fno-sanitize-recover=all)
add_compile_options(${sanitizers} -fsanitize=fuzzer-no-link -fno-omit-frame-pointer)
add_link_options(${sanitizers})
