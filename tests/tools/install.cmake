# Installs mdb into an empty folder and runs it from there, with nothing of the build tree.
#   -DBUILD=<build tree> -DFOLDER=<folder to install into> -DPROGRAM=<path of mdb below it> -DPAGE=<of its manual page>
file(REMOVE_RECURSE ${FOLDER})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${FOLDER} --component mdb
    RESULT_VARIABLE result OUTPUT_QUIET)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "install: ${result}")
endif()
if(NOT EXISTS ${FOLDER}/${PAGE})
    message(FATAL_ERROR "missing: ${PAGE}")
endif()

function(run expected)
    execute_process(COMMAND ${FOLDER}/${PROGRAM} ${ARGN} WORKING_DIRECTORY ${FOLDER}
        RESULT_VARIABLE result OUTPUT_VARIABLE text ERROR_VARIABLE text)
    if(NOT result EQUAL 0 OR NOT text STREQUAL expected)
        message(FATAL_ERROR "mdb ${ARGN}: ${result}\n${text}")
    endif()
endfunction()

set(ENV{LC_ALL} C)
run("" create essai.mdb)
run("0 rows\n" exec essai.mdb "CREATE TABLE T (a LONG)")
run("1 row\n" exec essai.mdb "INSERT INTO T (a) VALUES (7)")
run("a\n7\n" dump essai.mdb T)
run("" check essai.mdb)
file(REMOVE_RECURSE ${FOLDER})
