# Runs the first program of the README, NEREO_PROGRAM, which may begin with an emulator, with the arguments that the README
# gives it, in a folder with the sample configuration. It must print what the README says, and say what is wrong where
# something is.
file(READ "${NEREO_README}" readme)
if(NOT readme MATCHES "    \\$ program ([^\n]*)\n    ([^\n]*)\n")
    message(FATAL_ERROR "the README doesn't say how its program is run")
endif()
separate_arguments(arguments UNIX_COMMAND "${CMAKE_MATCH_1}")
set(output "${CMAKE_MATCH_2}\n")

# run(EXIT_CODE OUTPUT ERRORS argument...): what the program must give with the arguments
function(run exit_code output errors)
    execute_process(COMMAND ${NEREO_PROGRAM} ${ARGN} WORKING_DIRECTORY "${NEREO_FOLDER}"
        RESULT_VARIABLE actual_code OUTPUT_VARIABLE actual_output ERROR_VARIABLE actual_errors)
    if(NOT "${actual_code}|${actual_output}|${actual_errors}" STREQUAL "${exit_code}|${output}|${errors}")
        message(SEND_ERROR "program ${ARGN}\n${actual_code}\n${actual_output}${actual_errors}")
    endif()
endfunction()

file(REMOVE_RECURSE "${NEREO_FOLDER}")
file(MAKE_DIRECTORY "${NEREO_FOLDER}")
run(1 "" "can't load NEREO2_default.xml\n" ${arguments})

file(COPY "${NEREO_SAMPLES}/NEREO2_default.xml" DESTINATION "${NEREO_FOLDER}")
run(0 "${output}" "" ${arguments})
file(READ "${NEREO_FOLDER}/cavity.xml" saved)
if(NOT saved MATCHES "<MaxIter>500</MaxIter>")
    message(SEND_ERROR "the program has saved\n${saved}")
endif()

run(1 "" "the job prefix is missing\n")
run(1 "" "an option is unknown or has no value\n" cavity -MaxIter)
run(1 "" "an option is unknown or has no value\n" cavity -maxiter 500)
run(1 "nowhere/cavity: 2500 iterations\n" "can't save nowhere/cavity.xml\n" nowhere/cavity)
