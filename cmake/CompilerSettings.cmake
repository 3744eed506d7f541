# qkdlg_settings: what every target of this project compiles and links with.
add_library(qkdlg_settings INTERFACE)

if(MSVC)
    target_compile_options(qkdlg_settings INTERFACE /W4 /WX /permissive- /utf-8 /EHsc)
    # Debug information goes with the objects into static libraries, and from there into the PDB.
    set(CMAKE_MSVC_DEBUG_INFORMATION_FORMAT Embedded)
    # The module names its PDB, not the folder of the machine that made it.
    target_link_options(qkdlg_settings INTERFACE /DEBUG /OPT:REF /OPT:ICF /PDBALTPATH:%_PDB%)
    set(CMAKE_MSVC_RUNTIME_LIBRARY "MultiThreaded$<$<CONFIG:Debug>:Debug>" CACHE STRING "")
else()
    target_compile_options(
        qkdlg_settings
        INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
                  $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual>
                  # Nobody else has the folders of this machine: sources are named from here on.
                  $<$<CONFIG:Release>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=QkDlg>
                  $<$<CONFIG:Release>:-ffile-prefix-map=${PROJECT_BINARY_DIR}=QkDlg/build>)
endif()

if(MINGW)
    # Nothing but system DLLs may be needed at run time.
    target_link_options(
        qkdlg_settings
        INTERFACE -static
                  $<$<AND:$<CONFIG:Release>,$<NOT:$<BOOL:$<TARGET_PROPERTY:QKDLG_SYMBOL_FILE>>>>:-s>)
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

# Debug information for the sources of a target in release builds, too.
function(qkdlg_debuggable target)
    if(MINGW)
        target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-g>)
    endif()
endfunction()

# Release builds of a program or DLL lie stripped beside a symbol file, which debuggers find by the
# name that the module keeps: FILE.debug here, a PDB with MSVC.
function(qkdlg_symbol_file target)
    if(NOT MINGW OR QKDLG_COMPILE_ONLY OR NOT CMAKE_BUILD_TYPE STREQUAL Release)
        return()
    endif()
    set_target_properties(${target} PROPERTIES QKDLG_SYMBOL_FILE ON)
    set(file $<TARGET_FILE_NAME:${target}>)
    add_custom_command(
        TARGET ${target} POST_BUILD
        WORKING_DIRECTORY $<TARGET_FILE_DIR:${target}>
        COMMAND ${CMAKE_OBJCOPY} --only-keep-debug ${file} ${file}.debug
        COMMAND ${CMAKE_OBJCOPY} --strip-all --add-gnu-debuglink=${file}.debug ${file}
        VERBATIM)
endfunction()
