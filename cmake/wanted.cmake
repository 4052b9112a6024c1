# Says SKIPPED when a folder or a program that tests compare with is not on this machine, or a part of the program
# that they try could not be built on it.
if(UNBUILT)
    message("SKIPPED: ${UNBUILT} was not built")
endif()
if(WANTED_FOLDER AND NOT IS_DIRECTORY "${WANTED_FOLDER}")
    message("SKIPPED: no folder ${WANTED_FOLDER}")
endif()
if(WANTED_PROGRAM)
    find_program(found "${WANTED_PROGRAM}")
    if(NOT found)
        message("SKIPPED: no program ${WANTED_PROGRAM}")
    endif()
endif()
