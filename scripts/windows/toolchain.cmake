# Builds for Windows with mingw-w64 and what scripts/windows/dependencies has made; the variable
# TARNEL_WINDOWS_PREFIX of the environment names that folder.
if(NOT DEFINED ENV{TARNEL_WINDOWS_PREFIX})
    message(FATAL_ERROR "TARNEL_WINDOWS_PREFIX is not set: scripts/windows/build sets it")
endif()
file(TO_CMAKE_PATH "$ENV{TARNEL_WINDOWS_PREFIX}" prefix)

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/wine")

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 "${prefix}/qt" "${prefix}/hdf5")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The package file that HDF5 installs: CMake's own search would ask a compiler wrapper of the host.
set(HDF5_NO_FIND_PACKAGE_CONFIG_FILE OFF)
set(HDF5_ROOT "${prefix}/hdf5")
add_compile_definitions(H5_BUILT_AS_DYNAMIC_LIB)
