# Builds for 64-bit Windows on Debian 13, with its mingw-w64 compiler. PLUMARA_QT_WINDOWS, from the
# cache or the environment, is the folder of a Qt for Windows of the same version as the host's.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triple x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)

if(NOT PLUMARA_QT_WINDOWS)
    set(PLUMARA_QT_WINDOWS $ENV{PLUMARA_QT_WINDOWS})
endif()
# The checks of the compiler run in projects of their own, which get it handed on.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES PLUMARA_QT_WINDOWS)
set(CMAKE_PREFIX_PATH ${PLUMARA_QT_WINDOWS})
set(CMAKE_FIND_ROOT_PATH ${PLUMARA_QT_WINDOWS} /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# moc, uic, rcc and lrelease are the host's.
set(QT_HOST_PATH /usr)
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake)
