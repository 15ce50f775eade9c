# Configures the library in NEREO_BUILD as somebody does who chooses nothing.
file(REMOVE_RECURSE "${NEREO_BUILD}")
execute_process(
    COMMAND "${CMAKE_COMMAND}" -S "${NEREO_SOURCE_DIR}" -B "${NEREO_BUILD}" -G "${NEREO_GENERATOR}"
        "-DCMAKE_CXX_COMPILER=${NEREO_COMPILER}" "-DQt5_DIR=${NEREO_QT}" -DNEREO_BUILD_TESTS=OFF
    OUTPUT_QUIET RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "configuring failed: ${result}")
endif()
load_cache("${NEREO_BUILD}" READ_WITH_PREFIX chosen_ CMAKE_BUILD_TYPE)
if(NOT chosen_CMAKE_BUILD_TYPE STREQUAL "RelWithDebInfo")
    message(FATAL_ERROR "build type: ${chosen_CMAKE_BUILD_TYPE}")
endif()
