# clang as a second opinion on the Windows sources, with the headers of mingw-w64 GCC.
# It compiles everything and links nothing.
set(QKDLG_MINGW_TRIPLE x86_64-w64-mingw32)
set(QKDLG_MINGW_PROCESSOR x86_64)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET ${QKDLG_MINGW_TRIPLE})
set(CMAKE_CXX_COMPILER_TARGET ${QKDLG_MINGW_TRIPLE})
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
file(GLOB qkdlg_gcc_include /usr/lib/gcc/${QKDLG_MINGW_TRIPLE}/*-posix/include)
set(CMAKE_CXX_FLAGS_INIT "-nostdinc++ -isystem ${qkdlg_gcc_include}/c++ \
-isystem ${qkdlg_gcc_include}/c++/${QKDLG_MINGW_TRIPLE} \
-isystem ${qkdlg_gcc_include}/c++/backward -isystem /usr/${QKDLG_MINGW_TRIPLE}/include")
