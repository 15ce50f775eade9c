# Installs the consumer that has the library as a part of its own project: nothing of the library comes with it.
file(REMOVE_RECURSE "${NEREO_PREFIX}")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${NEREO_CONSUMER_BUILD}" --prefix "${NEREO_PREFIX}"
    OUTPUT_QUIET RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "installing failed: ${result}")
endif()
file(GLOB_RECURSE installed RELATIVE "${NEREO_PREFIX}" "${NEREO_PREFIX}/*")
if(NOT "${installed}" STREQUAL "bin/consumer")
    message(FATAL_ERROR "installed: ${installed}")
endif()
