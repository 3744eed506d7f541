# What cmake --install and cpack give to host developers: one tree that can lie anywhere.
#   bin/                    the DLL with its symbol file, QkPreview
#   lib/                    import library, classes
#   include/QkDlg/          headers
#   share/QkDlg/            resources of the classes, schema of DLG_XML, views for the debugger
#   share/doc/QkDlg/        README, CHANGELOG, documents, examples
#   lib/cmake/QkDlg/        find_package(QkDlg)
include(CMakePackageConfigHelpers)
set(QKDLG_CMAKE_DIR lib/cmake/QkDlg)
set(QKDLG_DOC_DIR share/doc/QkDlg)

# The names of libraries and of these files differ by architecture, so that one tree can hold both.
install(TARGETS QkDlg EXPORT QkDlgTargets RUNTIME DESTINATION bin
                                          ARCHIVE DESTINATION lib)
install(TARGETS QkDlgStatic EXPORT QkDlgStaticTargets ARCHIVE DESTINATION lib)
foreach(export QkDlgTargets QkDlgStaticTargets)
    install(EXPORT ${export} FILE ${export}${QKDLG_BITS}.cmake NAMESPACE QkDlg::
            DESTINATION ${QKDLG_CMAKE_DIR})
endforeach()
configure_package_config_file(cmake/QkDlgConfig.cmake.in QkDlgConfig.cmake
                              INSTALL_DESTINATION ${QKDLG_CMAKE_DIR})
# QkDlgConfig.cmake looks at the architecture, and says more about it.
write_basic_package_version_file(QkDlgConfigVersion.cmake COMPATIBILITY SameMajorVersion
                                 ARCH_INDEPENDENT)
install(FILES ${PROJECT_BINARY_DIR}/QkDlgConfig.cmake ${PROJECT_BINARY_DIR}/QkDlgConfigVersion.cmake
        DESTINATION ${QKDLG_CMAKE_DIR})

install(TARGETS QkPreview RUNTIME DESTINATION bin)
foreach(target QkDlg QkPreview)
    if(MSVC)
        install(FILES $<TARGET_PDB_FILE:${target}> DESTINATION bin OPTIONAL)
    else()
        install(FILES $<TARGET_FILE:${target}>.debug DESTINATION bin OPTIONAL)
    endif()
endforeach()

install(DIRECTORY include/QkDlg DESTINATION include)
install(FILES res/QkDlg.rc res/bitmaps.rc res/strings.rc res/dlg_xml.xsd debugger/QkDlg.natvis
        DESTINATION share/QkDlg)
install(DIRECTORY res/bitmaps DESTINATION share/QkDlg)
file(GLOB texts *.md)
install(FILES ${texts} DESTINATION ${QKDLG_DOC_DIR})
# At the places where README.md has them.
install(DIRECTORY docs DESTINATION ${QKDLG_DOC_DIR})
install(DIRECTORY examples/c_host examples/cpp_host examples/rust_host
        DESTINATION ${QKDLG_DOC_DIR}/examples)
install(FILES examples/Host.manifest DESTINATION ${QKDLG_DOC_DIR}/examples)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME QkDlg-${PROJECT_VERSION}-win${QKDLG_BITS})
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_SOURCE_GENERATOR "")
include(CPack)
