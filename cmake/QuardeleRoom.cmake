# A room is one folder of src/ with one purpose, and one library target:
#
#   quardele_room(<name> SOURCES <files> [PUBLIC <targets>] [PRIVATE <targets>] [QT])
#
# Public headers lie in include/<room>/ and are included as <room/header.h>; all other headers of the folder
# are the room's own. A room sees the headers of those rooms only that it names, so an include against the
# arrows of docs/architecture.md does not compile.
function(quardele_room name)
    cmake_parse_arguments(ARG "QT" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
    set(target quardele_${name})
    add_library(${target} STATIC ${ARG_SOURCES})
    target_include_directories(${target} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/include
                                         PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${target} PUBLIC ${ARG_PUBLIC} PRIVATE ${ARG_PRIVATE} quardele_warnings)
    if(ARG_QT)
        set_target_properties(${target} PROPERTIES AUTOMOC ON AUTOUIC ON AUTORCC ON)
    endif()
endfunction()

# GoogleTest as the system has it; for another system, made from the sources that Debian ships.
function(quardele_find_googletest)
    if(NOT CMAKE_CROSSCOMPILING)
        find_package(GTest REQUIRED GLOBAL)
    elseif(NOT TARGET GTest::gtest)
        add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
    endif()
endfunction()

# In seconds. Under wine everything takes longer.
set(QUARDELE_TEST_TIMEOUT 600)
if(CMAKE_CROSSCOMPILING)
    set(QUARDELE_TEST_TIMEOUT 3600)
endif()

# A test program run by ctest:
#
#   quardele_test(<name> SOURCES <files> LINKS <targets> [QT] [LABELS <labels>] [INTERNALS <room>...])
#
# Plain tests use GoogleTest; QT tests bring their own main (Qt Test) and run on the off-screen platform.
# INTERNALS opens a room's private headers to its own unit tests.
function(quardele_test name)
    cmake_parse_arguments(ARG "QT" "" "SOURCES;LINKS;LABELS;INTERNALS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LINKS} quardele_warnings)
    foreach(room IN LISTS ARG_INTERNALS)
        get_target_property(folder quardele_${room} SOURCE_DIR)
        target_include_directories(${name} PRIVATE ${folder})
    endforeach()
    target_compile_definitions(${name} PRIVATE
        QUARDELE_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
        QUARDELE_BINARY_DIR="${CMAKE_BINARY_DIR}"
        QUARDELE_CORPUS_DIR="${QUARDELE_CORPUS}"
        QUARDELE_SAMPLE_DIR="${QUARDELE_SAMPLE}")
    set(leak_options "LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/cmake/lsan.supp:print_suppressions=0")
    if(ARG_QT)
        set_target_properties(${name} PROPERTIES AUTOMOC ON)
        find_package(Qt6 REQUIRED COMPONENTS Test)
        target_link_libraries(${name} PRIVATE Qt6::Test)
        add_test(NAME ${name} COMMAND ${name})
        set_tests_properties(${name} PROPERTIES
            ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LANG=C.UTF-8;${leak_options}")
    else()
        quardele_find_googletest()
        target_link_libraries(${name} PRIVATE GTest::gtest_main GTest::gmock)
        add_test(NAME ${name} COMMAND ${name})
        set_tests_properties(${name} PROPERTIES ENVIRONMENT "${leak_options}")
    endif()
    set_tests_properties(${name} PROPERTIES TIMEOUT ${QUARDELE_TEST_TIMEOUT} LABELS "${ARG_LABELS}")
endfunction()

# A test of ctest that shows as skipped where something is missing that other tests compare with: their cases
# leave themselves out then, which ctest cannot see.
#
#   quardele_wanted(<name> FOLDER <folder> | PROGRAM <name> | MODULE <of Python> | BUILT <target>)
function(quardele_wanted name)
    cmake_parse_arguments(ARG "" "FOLDER;PROGRAM;MODULE;BUILT" "" ${ARGN})
    set(unbuilt "")
    if(ARG_BUILT AND NOT TARGET ${ARG_BUILT})
        set(unbuilt ${ARG_BUILT})
    endif()
    add_test(NAME ${name} COMMAND ${CMAKE_COMMAND} "-DWANTED_FOLDER=${ARG_FOLDER}" "-DWANTED_PROGRAM=${ARG_PROGRAM}"
        -DWANTED_MODULE=${ARG_MODULE} -DUNBUILT=${unbuilt}
        -P ${CMAKE_SOURCE_DIR}/cmake/wanted.cmake)
    set_tests_properties(${name} PROPERTIES SKIP_REGULAR_EXPRESSION "SKIPPED")
endfunction()

# A test of ctest that shows as skipped where the system does not let some cases of a test program do what they
# need: the program, which ctest runs as a whole, passes then, and ctest cannot see it.
#
#   quardele_possible(<name> TEST <program> FILTER <filter> LABELS <labels>)
function(quardele_possible name)
    cmake_parse_arguments(ARG "" "TEST;FILTER" "LABELS" ${ARGN})
    add_test(NAME ${name} COMMAND ${ARG_TEST} --gtest_filter=${ARG_FILTER})
    set_tests_properties(${name} PROPERTIES TIMEOUT ${QUARDELE_TEST_TIMEOUT} LABELS "${ARG_LABELS}" SKIP_REGULAR_EXPRESSION "SKIPPED")
endfunction()
