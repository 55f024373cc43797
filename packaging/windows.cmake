# `cpack` in the build folder makes tarnel-<version>-windows-x86_64.zip there: one folder that runs
# from wherever it is unpacked.
install(TARGETS tarnel orva_sample coupling_sample RUNTIME DESTINATION .)
install(DIRECTORY ${CMAKE_BINARY_DIR}/sample/ DESTINATION samples)
install(FILES ${CMAKE_SOURCE_DIR}/samples/README.md DESTINATION samples)
install(FILES ${CMAKE_SOURCE_DIR}/CHANGELOG.md windows-notice.txt DESTINATION .)
install(FILES ${CMAKE_SOURCE_DIR}/docs/user-guide.md DESTINATION docs)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/docs/images DESTINATION docs
    FILES_MATCHING PATTERN "*.png" PATTERN sizes EXCLUDE)
install(FILES ${CMAKE_SOURCE_DIR}/Images/MainWindowIcon.ico DESTINATION . RENAME tarnel.ico)

# The libraries beside the program, Qt's plugins in the folders where Qt looks for them.
foreach(module Core Gui Widgets Concurrent)
    install(FILES $<TARGET_FILE:Qt5::${module}> DESTINATION .)
endforeach()
get_target_property(qt_core Qt5::Core LOCATION)
get_filename_component(qt ${qt_core} DIRECTORY)
set(plugins ${qt}/../plugins)
install(FILES ${plugins}/platforms/qwindows.dll DESTINATION platforms)
install(FILES ${plugins}/styles/qwindowsvistastyle.dll DESTINATION styles)
install(FILES ${plugins}/imageformats/qgif.dll ${plugins}/imageformats/qico.dll
    DESTINATION imageformats)
install(FILES ${HDF5_ROOT}/bin/libhdf5.dll ${HDF5_ROOT}/bin/libhdf5_cpp.dll DESTINATION .)
foreach(library libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll zlib1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library}
        OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
    install(FILES ${path} DESTINATION .)
endforeach()

set(CPACK_GENERATOR ZIP)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_FILE_NAME tarnel-${PROJECT_VERSION}-windows-x86_64)
include(CPack)

# The player isn't a part of the package: it is put beside the unpacked program for the test.
if(TARNEL_TESTS)
    add_test(NAME packaging/package
        COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/check_windows_package ${CMAKE_BINARY_DIR}
            $<TARGET_FILE:play_sample> $<TARGET_FILE:Qt5::Test>)
    set_tests_properties(packaging/package PROPERTIES LABELS package TIMEOUT 900 RUN_SERIAL TRUE)
endif()
