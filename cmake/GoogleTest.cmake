# qkdlg_gtest: GoogleTest with GoogleMock, built from the sources that Debian's package
# "googletest" installs, or taken from the package manager of a Windows build.
# Without either the library builds, and there are no tests.
set(QKDLG_GTEST_SOURCE /usr/src/googletest CACHE PATH "Folder of the GoogleTest sources")

if(EXISTS ${QKDLG_GTEST_SOURCE}/CMakeLists.txt)
    set(gtest_disable_pthreads ${WIN32} CACHE BOOL "" FORCE)
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    set(BUILD_GMOCK ON CACHE BOOL "" FORCE)
    add_subdirectory(${QKDLG_GTEST_SOURCE} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
    add_library(qkdlg_gtest INTERFACE)
    target_link_libraries(qkdlg_gtest INTERFACE gmock gtest)
else()
    find_package(GTest QUIET)
    if(GTest_FOUND)
        add_library(qkdlg_gtest INTERFACE)
        target_link_libraries(qkdlg_gtest INTERFACE GTest::gmock GTest::gtest)
    else()
        message(WARNING "GoogleTest not found (Debian: package googletest): no tests are built")
    endif()
endif()
