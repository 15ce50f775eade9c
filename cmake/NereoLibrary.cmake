# What the libraries have in common, so that the file of a library's folder is little more than its sources.
include(GNUInstallDirs)
include(GenerateExportHeader)

# The warnings that every target of this project is clean of. A compiler whose options aren't known keeps its own.
if(MSVC)
    set(nereo_warnings /W4)
    set(nereo_warnings_as_errors /WX)
elseif(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    set(nereo_warnings -Wall -Wextra -Wpedantic -Wconversion)
    set(nereo_warnings_as_errors -Werror)
endif()

function(nereo_enable_warnings target)
    target_compile_options(${target} PRIVATE ${nereo_warnings})
    if(NEREO_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE ${nereo_warnings_as_errors})
    endif()
endfunction()

# Where the installed libraries look for each other: beside themselves.
if(APPLE)
    set(nereo_own_folder "@loader_path")
else()
    set(nereo_own_folder "$ORIGIN")
endif()

# nereo_add_library(NereoName source...): the shared library NereoName with the target Nereo::Name and the public
# headers in include/NereoName.
function(nereo_add_library name)
    string(REGEX REPLACE "^Nereo" "" short_name ${name})
    add_library(${name} SHARED ${ARGN})
    add_library(Nereo::${short_name} ALIAS ${name})

    # Hidden visibility also keeps a caller's instances of Qt's container templates from replacing the library's
    # own, which assert.
    set_target_properties(${name} PROPERTIES
        EXPORT_NAME ${short_name}
        SOVERSION 1
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
        INSTALL_RPATH "${nereo_own_folder}")
    target_compile_features(${name} PUBLIC cxx_std_17)
    nereo_enable_warnings(${name})

    # Nobody replaces the library's functions by their own: so those calls among them can be inlined that GCC would
    # else have go by way of the table of symbols.
    target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU,Clang>:-fno-semantic-interposition>)

    # Assertions belong to what the library promises in every build type. Qt compiles the index check out of
    # QList::removeAt as long as what 5.15 deprecates is enabled.
    target_compile_definitions(${name} PRIVATE QT_FORCE_ASSERTS QT_DISABLE_DEPRECATED_BEFORE=0x050F00)

    generate_export_header(${name} EXPORT_FILE_NAME "${PROJECT_BINARY_DIR}/include/${name}/Export.h")
    target_include_directories(${name} PUBLIC
        "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>"
        "$<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>"
        "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")

    if(NOT NEREO_INSTALL)
        return()
    endif()
    install(TARGETS ${name} EXPORT NereoFileIOTargets
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}")
    install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/${name}" "${PROJECT_BINARY_DIR}/include/${name}"
        DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
endfunction()
