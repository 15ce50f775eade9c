# Builds for the machine NEREO_MACHINE (s390x, arm64 or i386) with Debian's cross compiler, and runs what was built: as
# it is, if this machine can, or else in an emulator. Qt and GoogleTest for that machine are where
# scripts/other-machines.sh unpacks them.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES NEREO_MACHINE)

#               machine  processor  compiler           folder of libraries  loader of programs     emulator
set(known_machines
               "s390x    s390x      s390x-linux-gnu    s390x-linux-gnu      ld64.so.1              qemu-s390x"
               "arm64    aarch64    aarch64-linux-gnu  aarch64-linux-gnu    ld-linux-aarch64.so.1  qemu-aarch64"
               "i386     i686       i686-linux-gnu     i386-linux-gnu       ld-linux.so.2          qemu-i386")
list(FILTER known_machines INCLUDE REGEX "^${NEREO_MACHINE} ")
if(NOT known_machines)
    message(FATAL_ERROR "NEREO_MACHINE is s390x, arm64 or i386")
endif()
string(REGEX REPLACE " +" ";" columns "${known_machines}")
list(POP_FRONT columns machine processor compiler libraries loader emulator)

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR ${processor})
set(CMAKE_CXX_COMPILER ${compiler}-g++)
set(CMAKE_LIBRARY_ARCHITECTURE ${libraries})

# Packages find their parts only below a root without "..".
get_filename_component(CMAKE_SYSROOT "${CMAKE_CURRENT_LIST_DIR}/../build/${machine}-root" ABSOLUTE)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The loader and the libraries of that machine aren't where programs of this one have theirs. Only the older kind of
# path counts for the libraries of libraries, too.
set(loader "${CMAKE_SYSROOT}/lib/${libraries}/${loader}")
set(library_path "${CMAKE_SYSROOT}/usr/lib/${libraries}:${CMAKE_SYSROOT}/lib/${libraries}")
set(CMAKE_EXE_LINKER_FLAGS_INIT
    "-Wl,--dynamic-linker=${loader} -Wl,-rpath,${library_path} -Wl,--disable-new-dtags")
execute_process(COMMAND "${loader}" --version OUTPUT_QUIET ERROR_QUIET RESULT_VARIABLE runs_here)
if(NOT runs_here EQUAL 0)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${emulator} -L "${CMAKE_SYSROOT}")
endif()
