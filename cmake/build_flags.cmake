# One interface target carries the language level, the warnings and what reproducible numbers need.
# No fused multiply-add and no reassociation: kernels give the same bits at every processor level.
add_library(build_flags INTERFACE)
target_compile_features(build_flags INTERFACE cxx_std_20)
target_include_directories(build_flags INTERFACE ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR}/src)
target_compile_options(build_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -ffp-contract=off -fno-math-errno)
# Nobody replaces a function of ours at load time, so that a library calls its own functions directly.
target_compile_options(build_flags INTERFACE
    $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,SHARED_LIBRARY>:-fno-semantic-interposition>)
# GCC 12 warns of an overlap inside std::string's own insert that cannot happen.
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(build_flags INTERFACE -Wno-restrict)
endif()
# A shared library names all that it needs.
target_link_options(build_flags INTERFACE $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,SHARED_LIBRARY>:-Wl,-z,defs>)

option(BAILUXSKO_WERROR "Treat warnings as errors" OFF)
if(BAILUXSKO_WERROR)
    target_compile_options(build_flags INTERFACE -Werror)
endif()

set(BAILUXSKO_SANITIZE "" CACHE STRING "Sanitizers to build with, such as address,undefined")
if(BAILUXSKO_SANITIZE)
    target_compile_options(build_flags INTERFACE -fsanitize=${BAILUXSKO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(build_flags INTERFACE -fsanitize=${BAILUXSKO_SANITIZE})
endif()

option(BAILUXSKO_GUARD_ZONES "Look at both ends of LAPACK's arrays, as debug and sanitized builds always do" OFF)

# ccache makes a second build tree cheap; nothing depends on it.
find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

# Symbols are hidden unless BAILUXSKO_API exports them.
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
