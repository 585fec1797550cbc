# MinGW-w64 for the processor that the including file names; it builds on Debian and on Windows.
set(triplet ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32)
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${triplet}-gcc)
set(CMAKE_CXX_COMPILER ${triplet}-g++)
# On Windows the resource compiler has no name of its own for each processor.
find_program(ORVANEL_WINDRES NAMES ${triplet}-windres windres REQUIRED)
set(CMAKE_RC_COMPILER ${ORVANEL_WINDRES})
set(CMAKE_FIND_ROOT_PATH /usr/${triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
