# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# Finds the host IDE, Qt Creator, and what a plugin for it is built with.
#
# An official development package (QtCreatorConfig.cmake on CMAKE_PREFIX_PATH) is used when there is one. Otherwise the
# headers come from QTCREATOR_HEADERS (a CMake or environment variable: a folder with src/libs and src/plugins/coreplugin
# of the same version's sources) and the libraries from the installed program.
#
# Defines: QtCreator::Utils, QtCreator::ExtensionSystem, QtCreator::Core, QtCreator_EXECUTABLE, QtCreator_VERSION

find_program(QtCreator_EXECUTABLE qtcreator DOC "The Qt Creator executable")

find_package(QtCreator CONFIG QUIET)
if(QtCreator_FOUND)
    return()
endif()

set(QTCREATOR_HEADERS "$ENV{QTCREATOR_HEADERS}" CACHE PATH "Folder with the sources' headers of Qt Creator")

if(QtCreator_EXECUTABLE)
    get_filename_component(_qtcreator_binary "${QtCreator_EXECUTABLE}" REALPATH)
    get_filename_component(_qtcreator_prefix "${_qtcreator_binary}/../.." ABSOLUTE)
endif()
set(_qtcreator_library_hints
    "${_qtcreator_prefix}/lib/${CMAKE_LIBRARY_ARCHITECTURE}/qtcreator"
    "${_qtcreator_prefix}/lib/qtcreator"
)
set(_qtcreator_series "${QtCreator_FIND_VERSION_MAJOR}")

find_path(QtCreator_LIBS_INCLUDE_DIR extensionsystem/iplugin.h
    PATHS "${QTCREATOR_HEADERS}" PATH_SUFFIXES src/libs NO_DEFAULT_PATH)
find_path(QtCreator_PLUGINS_INCLUDE_DIR coreplugin/icore.h
    PATHS "${QTCREATOR_HEADERS}" PATH_SUFFIXES src/plugins NO_DEFAULT_PATH)
find_library(QtCreator_UTILS_LIBRARY NAMES libUtils.so.${_qtcreator_series} HINTS ${_qtcreator_library_hints})
find_library(QtCreator_EXTENSIONSYSTEM_LIBRARY NAMES libExtensionSystem.so.${_qtcreator_series}
    HINTS ${_qtcreator_library_hints})
find_library(QtCreator_CORE_LIBRARY NAMES libCore.so HINTS ${_qtcreator_library_hints} PATH_SUFFIXES plugins)

if(QtCreator_UTILS_LIBRARY)
    # libUtils.so.16 -> libUtils.so.16.0.1
    get_filename_component(_qtcreator_utils_file "${QtCreator_UTILS_LIBRARY}" REALPATH)
    string(REGEX REPLACE ".*\\.so\\." "" QtCreator_VERSION "${_qtcreator_utils_file}")
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(QtCreator
    REQUIRED_VARS
        QtCreator_EXECUTABLE QtCreator_LIBS_INCLUDE_DIR QtCreator_PLUGINS_INCLUDE_DIR
        QtCreator_UTILS_LIBRARY QtCreator_EXTENSIONSYSTEM_LIBRARY QtCreator_CORE_LIBRARY
    VERSION_VAR QtCreator_VERSION
)

if(QtCreator_FOUND AND NOT TARGET QtCreator::Core)
    find_package(Qt6 REQUIRED COMPONENTS Core Widgets Network)
    function(_qtcreator_import target library)
        add_library(QtCreator::${target} SHARED IMPORTED)
        set_target_properties(QtCreator::${target} PROPERTIES IMPORTED_LOCATION "${library}")
        # System headers: the host's warnings are not ours.
        target_include_directories(QtCreator::${target} SYSTEM INTERFACE
            "${QtCreator_LIBS_INCLUDE_DIR}" "${QtCreator_PLUGINS_INCLUDE_DIR}")
    endfunction()
    _qtcreator_import(Utils "${QtCreator_UTILS_LIBRARY}")
    target_link_libraries(QtCreator::Utils INTERFACE Qt6::Core Qt6::Gui Qt6::Widgets Qt6::Network)
    # What the host's headers are written for: they say "signals", and make texts from literals.
    target_compile_options(QtCreator::Utils INTERFACE
        -UQT_NO_KEYWORDS -UQT_NO_CAST_FROM_ASCII -DQT_RESTRICTED_CAST_FROM_ASCII)
    _qtcreator_import(ExtensionSystem "${QtCreator_EXTENSIONSYSTEM_LIBRARY}")
    target_link_libraries(QtCreator::ExtensionSystem INTERFACE QtCreator::Utils)
    _qtcreator_import(Core "${QtCreator_CORE_LIBRARY}")
    target_link_libraries(QtCreator::Core INTERFACE QtCreator::ExtensionSystem QtCreator::Utils)
endif()
