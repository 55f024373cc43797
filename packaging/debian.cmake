# `cpack` in the build folder makes tarnel_<version>_<architecture>.deb there.
set(TARNEL_PACKAGE_CONTACT "Harnwick Labs <tarnel@example.org>" CACHE STRING
    "Maintainer named by packages")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_CONTACT ${TARNEL_PACKAGE_CONTACT})
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Runs one simulation deck many times with varied material and contact
parameters, here or on another machine, and gathers the results of all
cases in one file that tells which parameters match an experiment.
.
A sample with a small stand-in for the simulator and a user guide are
included.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION TRUE)
# The libraries that the programs are linked with, asked from dpkg-shlibdeps.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Analysis scripts, the folder of distributed files, the sign behind "Delete H5 files".
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "python3, xdg-utils, fonts-symbola")
# The sample's plot; the cluster that tarnel-cases submits to; the engine behind orva-liggghts.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "python3-matplotlib, slurm-client, liggghts")
include(CPack)

# What users get is packed and tested from the build that holds nothing else.
if(NOT TARNEL_TESTS)
    add_test(NAME packaging/package
        COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/check_package ${CMAKE_BINARY_DIR})
    set_tests_properties(packaging/package PROPERTIES
        LABELS package SKIP_RETURN_CODE 77 TIMEOUT 900 RUN_SERIAL TRUE)
endif()
