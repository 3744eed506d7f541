# find_package(QkDlg): the installed library for hosts that are built with CMake.
#   QkDlg::QkDlgStatic  the classes; bitmaps and strings go into the module that links them, so its
#                       project has to enable the language RC
#   QkDlg::QkDlg        the import library of the DLL
math(EXPR QkDlg_BITS "8 * ${CMAKE_SIZEOF_VOID_P}")
get_filename_component(QkDlg_PREFIX "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)
set(QkDlg_INCLUDE_DIR "${QkDlg_PREFIX}/include")

if(NOT TARGET QkDlg::QkDlgStatic)
    add_library(QkDlg::QkDlgStatic STATIC IMPORTED)
    set_target_properties(
        QkDlg::QkDlgStatic PROPERTIES
        IMPORTED_LOCATION
        "${QkDlg_PREFIX}/lib/${CMAKE_STATIC_LIBRARY_PREFIX}QkDlgStatic${QkDlg_BITS}${CMAKE_STATIC_LIBRARY_SUFFIX}"
        INTERFACE_INCLUDE_DIRECTORIES "${QkDlg_INCLUDE_DIR}"
        INTERFACE_LINK_LIBRARIES "comctl32;gdi32;msimg32;user32"
        INTERFACE_SOURCES "${QkDlg_PREFIX}/share/QkDlg/QkDlg.rc")
    add_library(QkDlg::QkDlg SHARED IMPORTED)
    set_target_properties(
        QkDlg::QkDlg PROPERTIES
        IMPORTED_LOCATION "${QkDlg_PREFIX}/bin/QkDlg${QkDlg_BITS}.dll"
        IMPORTED_IMPLIB
        "${QkDlg_PREFIX}/lib/libQkDlg${QkDlg_BITS}${CMAKE_IMPORT_LIBRARY_SUFFIX}"
        INTERFACE_INCLUDE_DIRECTORIES "${QkDlg_INCLUDE_DIR}")
endif()
