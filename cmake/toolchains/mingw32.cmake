# Cross build for Windows (i686) with Debian's mingw-w64 GCC, posix threads.
set(QKDLG_MINGW_TRIPLE i686-w64-mingw32)
set(QKDLG_MINGW_PROCESSOR i686)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
set(CMAKE_C_COMPILER ${QKDLG_MINGW_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${QKDLG_MINGW_TRIPLE}-g++-posix)
