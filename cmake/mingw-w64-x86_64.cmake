# Cross build for 64-bit Windows with Debian's mingw-w64 (posix threads variant; winpthread is linked statically).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(LW_MINGW_TRIPLE x86_64-w64-mingw32)

set(CMAKE_C_COMPILER ${LW_MINGW_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${LW_MINGW_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${LW_MINGW_TRIPLE}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${LW_MINGW_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Windows programs built here run under Wine in a prefix the test set-up makes.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine-run.sh)
