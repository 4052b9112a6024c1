# Compiler settings shared by every target: C++20, warnings as errors, ccache, sanitizers.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)

find_program(QUARDELE_CCACHE ccache)
if(QUARDELE_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${QUARDELE_CCACHE})
endif()

# Generated code (uic, moc) gets no warnings; our own gets these.
add_library(quardele_warnings INTERFACE)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    target_compile_options(quardele_warnings INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wold-style-cast
        -Wcast-qual -Woverloaded-virtual -Wnull-dereference -Werror)
    # Once it optimises, GCC 12 takes joined strings for overlapping copies (its bug 105651) and values of
    # std::variant for null pointers. Debug builds keep both warnings.
    target_compile_options(quardele_warnings INTERFACE
        $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-restrict>
        $<$<AND:$<CXX_COMPILER_ID:GNU>,$<CONFIG:Release>>:-Wno-null-dereference>)
endif()

if(QUARDELE_SANITIZE)
    # GCC's null-dereference analysis gives false alarms on instrumented code.
    target_compile_options(quardele_warnings INTERFACE
        $<$<CXX_COMPILER_ID:GNU>:-Wno-null-dereference> $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
    add_compile_options(-fsanitize=${QUARDELE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${QUARDELE_SANITIZE})
endif()

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
endif()
