# A room's own public headers must compile together; each header of the other room must be out of sight. The
# first half makes sure that the second does not fail for want of a working compiler command.
cmake_minimum_required(VERSION 3.24)

# Sets `status` and `messages` to the outcome of compiling a file that includes these headers and nothing else.
function(compile_includes)
    list(TRANSFORM ARGN REPLACE "(.+)" "#include <\\1>\n" OUTPUT_VARIABLE lines)
    list(JOIN lines "" content)
    file(WRITE ${SOURCE} "${content}")
    list(TRANSFORM INCLUDE_FOLDERS PREPEND -I OUTPUT_VARIABLE flags)
    execute_process(
        COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C ${COMPILER} -std=c++20 -fPIC -fsyntax-only ${flags} ${SOURCE}
        RESULT_VARIABLE result
        OUTPUT_VARIABLE output
        ERROR_VARIABLE output)
    set(status ${result} PARENT_SCOPE)
    set(messages ${output} PARENT_SCOPE)
endfunction()

function(headers_in folder variable)
    file(GLOB_RECURSE headers RELATIVE ${folder} ${folder}/*.h)
    if(NOT headers)
        message(FATAL_ERROR "${folder} has no headers to try")
    endif()
    set(${variable} ${headers} PARENT_SCOPE)
endfunction()

headers_in(${OWN_HEADERS} own)
compile_includes(${own})
if(NOT status EQUAL 0)
    message(FATAL_ERROR "${own} should compile here:\n${messages}")
endif()

headers_in(${FORBIDDEN_HEADERS} forbidden)
foreach(header IN LISTS forbidden)
    compile_includes(${header})
    if(status EQUAL 0)
        message(FATAL_ERROR "<${header}> can be included against the arrows")
    endif()
    string(FIND "${messages}" "${header}: No such file" gccAnswer)
    string(FIND "${messages}" "'${header}' file not found" clangAnswer)
    if(gccAnswer EQUAL -1 AND clangAnswer EQUAL -1)
        message(FATAL_ERROR "<${header}> fails for another reason than being out of sight:\n${messages}")
    endif()
endforeach()
