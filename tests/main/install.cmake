# Installs the program into an empty folder and looks for what it needs beside it.
#   -DBUILD=<build tree> -DFOLDER=<folder to install into> -DPROGRAM=<path of the program below it>
#   -DBRIDGE=<path of its bridge to Writer below it, or nothing> -DREPORT=<the report file of the sources>
file(REMOVE_RECURSE ${FOLDER})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${FOLDER} --component vehicules
    RESULT_VARIABLE result OUTPUT_QUIET)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "install: ${result}")
endif()

# The sheet of a vehicle is printed by a report that the program seeks in its own folder.
get_filename_component(programs ${PROGRAM} DIRECTORY)
set(report ${programs}/IMPVEH.RPT)
foreach(file ${PROGRAM} ${BRIDGE} ${report})
    if(NOT EXISTS ${FOLDER}/${file})
        message(FATAL_ERROR "missing: ${file}")
    endif()
endforeach()
file(SHA256 ${REPORT} wanted)
file(SHA256 ${FOLDER}/${report} installed)
if(NOT installed STREQUAL wanted)
    message(FATAL_ERROR "another report: ${report}")
endif()
file(REMOVE_RECURSE ${FOLDER})
