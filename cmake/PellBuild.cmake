# What every part of the build uses: warnings, sanitizers, coverage, the two folders that can be run, export lists, and
# the header-only libraries of the host and the tests.

if(PELL_SANITIZE)
    add_compile_options(-fsanitize=${PELL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    # src/ is compiled with UBSan as well (see there), so everything is linked with it.
    add_link_options(-fsanitize=${PELL_SANITIZE},undefined)
endif()
# What counts the lines and branches of src/. Whatever has its inline functions needs it.
set(PELL_COUNTED "")
if(PELL_COVERAGE)
    set(PELL_COUNTED --coverage -fprofile-update=atomic -O0)
    add_link_options(--coverage)
endif()
if(CMAKE_BUILD_TYPE STREQUAL "Debug")
    add_compile_options(-O1)
endif()
if(WIN32)
    add_compile_definitions(UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0601)
    add_link_options(-Wl,--no-insert-timestamp)  # the same bytes whenever it is built
endif()

# Warnings for our own code; third-party headers are system headers.
add_library(pell_warnings INTERFACE)
target_compile_options(pell_warnings INTERFACE -Wall -Wextra -Wconversion -Wshadow -Werror)

# Folders that can be run as they are: the plug-in, the development host and a set of companion libraries.
# `full` has every companion; `minimal` is an older world (see companions/ and simulator/).
set(PELL_FULL ${CMAKE_BINARY_DIR}/full)
set(PELL_MINIMAL ${CMAKE_BINARY_DIR}/minimal)

function(pell_place target directory)
    set_target_properties(${target} PROPERTIES
        PREFIX "" RUNTIME_OUTPUT_DIRECTORY ${directory} LIBRARY_OUTPUT_DIRECTORY ${directory}
        ARCHIVE_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib
        BUILD_WITH_INSTALL_RPATH ON INSTALL_RPATH "$ORIGIN;$ORIGIN/..")
endfunction()

# Copies a target's file into another folder whenever it was built anew.
function(pell_copy target directory)
    get_filename_component(name ${directory} NAME)
    set(copy ${directory}/$<TARGET_FILE_NAME:${target}>)
    set(stamp ${CMAKE_BINARY_DIR}/copies/${target}.${name})
    add_custom_command(OUTPUT ${stamp}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${directory} ${CMAKE_BINARY_DIR}/copies
        COMMAND ${CMAKE_COMMAND} -E copy $<TARGET_FILE:${target}> ${copy}
        COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
        DEPENDS ${target} $<TARGET_FILE:${target}> VERBATIM)
    add_custom_target(${target}_in_${name} ALL DEPENDS ${stamp})
endfunction()

# A shared library that exports exactly the functions of a module-definition file. On Windows the linker reads the file
# itself; elsewhere its names become a version script.
function(pell_export_only target definitions)
    if(WIN32)
        target_sources(${target} PRIVATE ${definitions})
    else()
        set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
        file(STRINGS ${definitions} lines REGEX "^    [A-Za-z_]")
        set(names "")
        foreach(line IN LISTS lines)
            string(REGEX MATCH "[A-Za-z_0-9]+" name "${line}")
            string(APPEND names "${name};")
            target_link_options(${target} PRIVATE -Wl,--require-defined=${name})
        endforeach()
        file(CONFIGURE OUTPUT ${script} CONTENT "{ global: ${names} local: *; };\n" @ONLY)
        target_link_options(${target} PRIVATE -Wl,--version-script=${script})
        if(NOT PELL_SANITIZE)  # some compilers leave a sanitizer's functions to the program
            target_link_options(${target} PRIVATE -Wl,--no-undefined)
        endif()
        set_target_properties(${target} PROPERTIES LINK_DEPENDS ${script} CXX_VISIBILITY_PRESET default)
    endif()
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${definitions})
endfunction()

# The functions that C headers declare, as a module-definition file.
function(pell_definitions_of_headers headers pattern output)
    set(lines "")
    foreach(header IN LISTS headers)
        file(STRINGS ${header} declarations REGEX "${pattern}[A-Za-z0-9_]*\\(")
        list(APPEND lines ${declarations})
    endforeach()
    set(names "")
    foreach(line IN LISTS lines)
        if(NOT line MATCHES "^typedef" AND line MATCHES "(${pattern}[A-Za-z0-9_]*)\\(")
            string(APPEND names "    ${CMAKE_MATCH_1}\n")
        endif()
    endforeach()
    file(CONFIGURE OUTPUT ${output} CONTENT "EXPORTS\n${names}" @ONLY)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${headers})
endfunction()

# Header-only libraries from Debian. A cross compiler must not see all of the build machine's headers, so they are
# reached through a folder of links of their own.
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/headers)
foreach(library nlohmann CLI boost)
    if(NOT EXISTS /usr/include/${library})
        message(FATAL_ERROR "/usr/include/${library} is missing: run scripts/install-packages")
    endif()
    file(CREATE_LINK /usr/include/${library} ${CMAKE_BINARY_DIR}/headers/${library} SYMBOLIC)
endforeach()
add_library(pell_headers INTERFACE)
target_include_directories(pell_headers SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/headers)

# The compiler's shared runtime, for everything but the plug-in: the simulator's libraries pass C++ objects around.
if(WIN32)
    foreach(library libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library}
            OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE)
        foreach(directory ${PELL_FULL} ${PELL_MINIMAL})
            file(COPY ${file} DESTINATION ${directory})
        endforeach()
    endforeach()
endif()
