# qkdlg_boost: the Boost headers, nothing of Boost is linked.
add_library(qkdlg_boost INTERFACE)

if(CMAKE_CROSSCOMPILING)
    # The host's header-only Boost serves the cross compilers too. Its folder is reached through
    # a link, because /usr/include itself would bring the host's C library along.
    find_path(QKDLG_BOOST_PARENT boost/version.hpp PATHS /usr/include NO_DEFAULT_PATH
              NO_CMAKE_FIND_ROOT_PATH)
    if(NOT QKDLG_BOOST_PARENT)
        message(FATAL_ERROR "Boost headers not found: install libboost-dev")
    endif()
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/boost-include)
    file(CREATE_LINK ${QKDLG_BOOST_PARENT}/boost ${PROJECT_BINARY_DIR}/boost-include/boost SYMBOLIC)
    target_include_directories(qkdlg_boost SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/boost-include)
else()
    find_package(Boost REQUIRED)
    target_link_libraries(qkdlg_boost INTERFACE Boost::headers)
endif()
