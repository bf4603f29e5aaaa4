# Compiler and linker options that every target of the project shares.
option(NW_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
option(NW_SANITIZE_THREADS "Build with the thread sanitizer" OFF)
option(NW_FUZZ "Build the fuzzers (clang only)" OFF)

# The walks call themselves for each level of a folder tree, of which a path can have more than
# 16,000; only what is used of the stack is taken.
set(NW_STACK 33554432)

add_library(nw_options INTERFACE)
target_include_directories(nw_options INTERFACE
    ${CMAKE_SOURCE_DIR}/src ${CMAKE_BINARY_DIR}/generated)
# The first lines of the licence say whose the program is.
file(STRINGS ${CMAKE_SOURCE_DIR}/LICENSE NW_COPYRIGHT REGEX "^Copyright" LIMIT_COUNT 1)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/LICENSE)
configure_file(${CMAKE_CURRENT_LIST_DIR}/Version.h.in ${CMAKE_BINARY_DIR}/generated/Version.h @ONLY)

if(MSVC)
    # Warnings are no errors here: nobody has counted them yet. /utf-8 and the rest are for C++ only,
    # the resource compiler knows none of them.
    target_compile_options(nw_options INTERFACE
        "$<$<COMPILE_LANGUAGE:CXX>:/W4;/permissive-;/utf-8;/Zc:__cplusplus;/guard:cf;/EHsc>")
    target_compile_definitions(nw_options INTERFACE _CRT_SECURE_NO_WARNINGS)
    target_link_options(nw_options INTERFACE /guard:cf /CETCOMPAT /STACK:${NW_STACK})
    set(CMAKE_MSVC_RUNTIME_LIBRARY "MultiThreaded$<$<CONFIG:Debug>:Debug>")
else()
    # Resource files go through the same targets; their compiler knows none of these.
    target_compile_options(nw_options INTERFACE "$<$<COMPILE_LANGUAGE:CXX>:\
-Wall;-Wextra;-Wpedantic;-Wconversion;-Wshadow;-Werror>")
    # GCC 12 warns of overlaps inside its own string concatenation that cannot happen.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(nw_options INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)
    else()
        # As GCC has it: there, conversions of sign are not part of -Wconversion.
        target_compile_options(nw_options INTERFACE
            $<$<COMPILE_LANGUAGE:CXX>:-Wno-sign-conversion>)
    endif()
endif()

if(WIN32)
    target_compile_definitions(nw_options INTERFACE
        UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00 WINVER=0x0A00)
    if(NOT MSVC)
        target_compile_options(nw_options INTERFACE "$<$<COMPILE_LANGUAGE:CXX>:\
-fstack-protector-strong;-fstack-clash-protection;\
$<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>>")
        # No time stamp in the image: the same sources give the same bytes.
        target_link_options(nw_options INTERFACE
            -static -fstack-protector-strong -Wl,--dynamicbase -Wl,--nxcompat -Wl,--high-entropy-va
            -Wl,--no-insert-timestamp -Wl,--stack,${NW_STACK})
    endif()
endif()

if(NW_SANITIZE)
    target_compile_options(nw_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(nw_options INTERFACE -fsanitize=address,undefined)
endif()

if(NW_SANITIZE_THREADS)
    target_compile_options(nw_options INTERFACE -fsanitize=thread)
    target_link_options(nw_options INTERFACE -fsanitize=thread)
endif()

if(NW_FUZZ)
    # The coverage by which the fuzzers find their way; each brings its own main function.
    target_compile_options(nw_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
