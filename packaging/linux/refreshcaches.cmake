# Has the desktop notice what was installed, as a package's installation does by itself: the type of the
# boards, what opens them, and the icons. What is missing on the machine keeps no such list.
if(DEFINED ENV{DESTDIR} AND NOT "$ENV{DESTDIR}" STREQUAL "")
    return()
endif()

# refresh(<program> <argument>...)
function(refresh program)
    find_program(path_of_${program} ${program})
    if(path_of_${program})
        execute_process(COMMAND ${path_of_${program}} ${ARGN} OUTPUT_QUIET ERROR_QUIET)
    endif()
endfunction()

refresh(update-mime-database "${CMAKE_INSTALL_PREFIX}/share/mime")
refresh(update-desktop-database "${CMAKE_INSTALL_PREFIX}/share/applications")
refresh(gtk-update-icon-cache --quiet --force --ignore-theme-index
    "${CMAKE_INSTALL_PREFIX}/share/icons/hicolor")
