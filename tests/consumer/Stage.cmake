# Installs the build tree to one place and moves the result to NEREO_PREFIX, which it must survive.
set(first_place "${NEREO_PREFIX}-first")
file(REMOVE_RECURSE "${first_place}" "${NEREO_PREFIX}")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${NEREO_BINARY_DIR}" --prefix "${first_place}"
    OUTPUT_QUIET RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "installing failed: ${result}")
endif()
file(RENAME "${first_place}" "${NEREO_PREFIX}")
