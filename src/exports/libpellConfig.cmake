# find_package(libpell) gives the target libpell::libpell: its header, and the import library for the linker in use. The
# DLL itself is in bin/, as the target's location.
if(NOT WIN32)
    set(libpell_FOUND FALSE)
    set(libpell_NOT_FOUND_MESSAGE "libpell is a DLL for Windows x86-64.")
    return()
endif()
if(NOT TARGET libpell::libpell)
    get_filename_component(_libpell_root "${CMAKE_CURRENT_LIST_DIR}/../../.." ABSOLUTE)
    if(MINGW)
        set(_libpell_import_library libpell.dll.a)
    else()
        set(_libpell_import_library libpell.lib)
    endif()
    add_library(libpell::libpell SHARED IMPORTED)
    set_target_properties(libpell::libpell PROPERTIES
        IMPORTED_LOCATION "${_libpell_root}/bin/libpell.dll"
        IMPORTED_IMPLIB "${_libpell_root}/lib/${_libpell_import_library}"
        INTERFACE_INCLUDE_DIRECTORIES "${_libpell_root}/include")
    unset(_libpell_import_library)
    unset(_libpell_root)
endif()
