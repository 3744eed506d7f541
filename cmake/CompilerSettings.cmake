# qkdlg_settings: what every target of this project compiles and links with.
add_library(qkdlg_settings INTERFACE)

if(MSVC)
    target_compile_options(qkdlg_settings INTERFACE /W4 /WX /permissive- /utf-8 /EHsc)
    set(CMAKE_MSVC_RUNTIME_LIBRARY "MultiThreaded$<$<CONFIG:Debug>:Debug>" CACHE STRING "")
else()
    target_compile_options(
        qkdlg_settings
        INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
                  $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual>)
endif()

if(MINGW)
    # Nothing but system DLLs may be needed at run time.
    target_link_options(qkdlg_settings INTERFACE -static $<$<CONFIG:Release>:-s>)
endif()

if(QKDLG_SANITIZE)
    target_compile_options(qkdlg_settings INTERFACE -fsanitize=address,undefined
                                                    -fno-sanitize-recover=all)
    target_link_options(qkdlg_settings INTERFACE -fsanitize=address,undefined)
endif()

if(QKDLG_FUZZ)
    # What the search follows; the programs themselves also link its main function.
    target_compile_options(qkdlg_settings INTERFACE -fsanitize=fuzzer-no-link)
endif()

# A program or DLL, or in a warnings build just its objects.
function(qkdlg_add_module kind name)
    if(QKDLG_COMPILE_ONLY)
        list(REMOVE_ITEM ARGN WIN32)
        list(FILTER ARGN EXCLUDE REGEX "\\.(rc|def)$")
        add_library(${name} OBJECT ${ARGN})
    elseif(kind STREQUAL PROGRAM)
        add_executable(${name} ${ARGN})
    else()
        add_library(${name} SHARED ${ARGN})
    endif()
    target_link_libraries(${name} PRIVATE qkdlg_settings)
endfunction()
