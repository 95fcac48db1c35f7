# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# The build folder is laid out as an installed IDE is, so that what was built can be loaded from where it lies:
#   lib/                      shared libraries (Tarn, QSsh)
#   lib/qtcreator/plugins/    IDE plugins
#   ide/bin/                  a Qt Creator of our own: the packaged executable beside links to the rest of the package.
#                             Data files that plugins look for beside the IDE's executable go there.

set(EMULATIONMANAGEMENT_LIBRARY_DIR "${PROJECT_BINARY_DIR}/lib")
set(EMULATIONMANAGEMENT_IDE_PLUGIN_DIR "${PROJECT_BINARY_DIR}/lib/qtcreator/plugins")
set(EMULATIONMANAGEMENT_IDE_DIR "${PROJECT_BINARY_DIR}/ide")
set(EMULATIONMANAGEMENT_IDE_BIN_DIR "${EMULATIONMANAGEMENT_IDE_DIR}/bin")
set(EMULATIONMANAGEMENT_IDE_EXECUTABLE "${EMULATIONMANAGEMENT_IDE_BIN_DIR}/qtcreator")

get_filename_component(_ide_binary "${QtCreator_EXECUTABLE}" REALPATH)
get_filename_component(_ide_prefix "${_ide_binary}/../.." REALPATH)

# An installation goes where the IDE itself looks, relative to its own prefix, which is the prefix to install to.
get_target_property(_ide_library QtCreator::Utils LOCATION)
get_filename_component(_ide_library_dir "${_ide_library}" DIRECTORY)
get_filename_component(_ide_binary_dir "${_ide_binary}" DIRECTORY)
file(REAL_PATH "${_ide_library_dir}" _ide_library_dir)
file(RELATIVE_PATH EMULATIONMANAGEMENT_INSTALL_LIBRARY_DIR "${_ide_prefix}" "${_ide_library_dir}")
file(RELATIVE_PATH EMULATIONMANAGEMENT_INSTALL_BIN_DIR "${_ide_prefix}" "${_ide_binary_dir}")
set(EMULATIONMANAGEMENT_INSTALL_PLUGIN_DIR "${EMULATIONMANAGEMENT_INSTALL_LIBRARY_DIR}/plugins")
set(EMULATIONMANAGEMENT_INSTALL_TRANSLATION_DIR "share/qtcreator/translations")
set(EMULATIONMANAGEMENT_INSTALL_DOC_DIR "share/doc/emulationmanagement")
if(CMAKE_INSTALL_PREFIX_INITIALIZED_TO_DEFAULT)
    set_property(CACHE CMAKE_INSTALL_PREFIX PROPERTY VALUE "${_ide_prefix}")
endif()

file(MAKE_DIRECTORY "${EMULATIONMANAGEMENT_IDE_BIN_DIR}")
file(COPY_FILE "${_ide_binary}" "${EMULATIONMANAGEMENT_IDE_EXECUTABLE}" ONLY_IF_DIFFERENT)

# link_all(from to [except...]): a folder of links to everything in another one.
function(link_all from to)
    file(MAKE_DIRECTORY "${to}")
    file(GLOB _entries RELATIVE "${from}" "${from}/*")
    list(REMOVE_ITEM _entries ${ARGN})
    foreach(_entry IN LISTS _entries)
        file(CREATE_LINK "${from}/${_entry}" "${to}/${_entry}" SYMBOLIC)
    endforeach()
endfunction()

# Translations are looked for among the IDE's own, so that folder is ours too.
set(EMULATIONMANAGEMENT_IDE_TRANSLATION_DIR "${EMULATIONMANAGEMENT_IDE_DIR}/share/qtcreator/translations")
foreach(_part IN ITEMS lib libexec)
    file(CREATE_LINK "${_ide_prefix}/${_part}" "${EMULATIONMANAGEMENT_IDE_DIR}/${_part}" SYMBOLIC)
endforeach()
link_all("${_ide_prefix}/share" "${EMULATIONMANAGEMENT_IDE_DIR}/share" qtcreator)
link_all("${_ide_prefix}/share/qtcreator" "${EMULATIONMANAGEMENT_IDE_DIR}/share/qtcreator" translations)
link_all("${_ide_prefix}/share/qtcreator/translations" "${EMULATIONMANAGEMENT_IDE_TRANSLATION_DIR}")

# Each plugin is a component of its own, which is what an extension archive holds. An extension installed for one user
# finds no libraries outside its own folder, so both archives carry the SDK's.

# install_sdk_library(target)
function(install_sdk_library target)
    install(TARGETS ${target} LIBRARY DESTINATION "${EMULATIONMANAGEMENT_INSTALL_LIBRARY_DIR}" NAMELINK_SKIP
        COMPONENT TarnPlugin)
    install(TARGETS ${target} LIBRARY DESTINATION "${EMULATIONMANAGEMENT_INSTALL_LIBRARY_DIR}" NAMELINK_SKIP
        COMPONENT EmulationManagement EXCLUDE_FROM_ALL)
endfunction()

# add_ide_plugin(target METADATA json.in-file SOURCES ... LIBRARIES ... [DESTINATION dir])
# A module that the IDE loads. The project's version is filled into the metadata. DESTINATION replaces the common plugin
# folder (test plugins keep to themselves).
function(add_ide_plugin target)
    cmake_parse_arguments(arg "" "DESTINATION;METADATA" "SOURCES;LIBRARIES" ${ARGN})
    if(NOT arg_DESTINATION)
        set(arg_DESTINATION "${EMULATIONMANAGEMENT_IDE_PLUGIN_DIR}")
    endif()
    cmake_path(GET arg_METADATA STEM LAST_ONLY _metadata)
    configure_file("${arg_METADATA}" "${_metadata}" @ONLY)
    qt_add_library(${target} MODULE ${arg_SOURCES})
    target_include_directories(${target} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}") # where moc finds the metadata
    target_link_libraries(${target} PRIVATE EmulationManagement::Options QtCreator::Core ${arg_LIBRARIES})
    set_target_properties(${target} PROPERTIES
        LIBRARY_OUTPUT_DIRECTORY "${arg_DESTINATION}"
        BUILD_RPATH "${EMULATIONMANAGEMENT_LIBRARY_DIR}"
        INSTALL_RPATH "$ORIGIN;$ORIGIN/.."
    )
    if(arg_DESTINATION STREQUAL EMULATIONMANAGEMENT_IDE_PLUGIN_DIR)
        install(TARGETS ${target}
            LIBRARY DESTINATION "${EMULATIONMANAGEMENT_INSTALL_PLUGIN_DIR}" COMPONENT ${target})
    endif()
endfunction()
