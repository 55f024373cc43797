# The roof: the one place that knows all six pages. It stands beside the ground in app/, and can
# only be built when all floors between them are there.
tarnel_library(tarnel_window
    app/main_window.cpp
    app/main_window.h
    app/startup.cpp
    app/startup.h)
target_link_libraries(tarnel_window PUBLIC
    tarnel_deck tarnel_parameters tarnel_setup tarnel_jobs tarnel_results)
tarnel_form(tarnel_window main_window)

# Never both: a program with a `main` is entered there, even on Windows.
add_executable(tarnel WIN32 $<IF:$<BOOL:${WIN32}>,app/main_windows.cpp,app/main.cpp>)
target_link_libraries(tarnel PRIVATE tarnel_warnings tarnel_window)
# The entry of our own narrows the command line; Qt's would be a second one.
set_target_properties(tarnel PROPERTIES Qt5_NO_LINK_QTMAIN ON)
if(WIN32)
    configure_file(app/tarnel_windows.rc.in ${CMAKE_BINARY_DIR}/tarnel.rc @ONLY)
    target_sources(tarnel PRIVATE ${CMAKE_BINARY_DIR}/tarnel.rc)
endif()
