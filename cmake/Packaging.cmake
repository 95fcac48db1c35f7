# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# "cpack" in the build folder makes
#   a Debian package with everything, for the packaged Qt Creator, and
#   an extension archive of each plugin, which the IDE's "Install Extension" takes: it wants one plugin in an archive.

set(CPACK_GENERATOR DEB TXZ)
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_PACKAGE_NAME emulationmanagement)
set(CPACK_PACKAGE_VENDOR "EmulationManagement contributors")
set(CPACK_PACKAGE_CONTACT "EmulationManagement contributors <contributors@emulationmanagement.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DESCRIPTION
"Drives the Velmo OS emulator from the IDE while an app runs in it: sensor
readings, positions and recorded tracks, a camera's picture, and a virtual
phone whose pose becomes sensor readings.")
set(CPACK_STRIP_FILES ON)
# Whatever the builder's umask.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_VERBATIM_VARIABLES ON)
# The generators differ in where things go.
set(CPACK_PROJECT_CONFIG_FILE "${CMAKE_CURRENT_LIST_DIR}/PackagingPaths.cmake")

# The libraries' dependencies are found in the files; what is loaded or started by its name is listed here. The plugin
# also works with an SDK that brings its own emulator.
set(_loaded_by_name
    gstreamer1.0-plugins-base
    gstreamer1.0-plugins-good
    openssh-client
    qml6-module-qtquick
    qml6-module-qtquick-controls
    qml6-module-qtquick-dialogs
    qml6-module-qtquick-layouts
    qml6-module-qtquick-templates
    qml6-module-qtquick-window
    qml6-module-qtsensors
)
# The virtual machine.
set(_recommended
    libvirt-daemon-driver-qemu
    passt
    qemu-system-x86
)
# Cameras that only PipeWire knows.
set(_suggested
    gstreamer1.0-pipewire
)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${EMULATIONMANAGEMENT_LIBRARY_DIR}" "${_ide_library_dir}")
math(EXPR _next_series "${PROJECT_VERSION_MAJOR} + 1")
list(JOIN _loaded_by_name ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
string(APPEND CPACK_DEBIAN_PACKAGE_DEPENDS
    ", qtcreator (>= ${PROJECT_VERSION_MAJOR}), qtcreator (<< ${_next_series}~)")
list(JOIN _recommended ", " CPACK_DEBIAN_PACKAGE_RECOMMENDS)
list(JOIN _suggested ", " CPACK_DEBIAN_PACKAGE_SUGGESTS)

set(CPACK_COMPONENTS_ALL EmulationManagement TarnPlugin)
set(CPACK_COMPONENTS_GROUPING IGNORE)
foreach(_component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER "${_component}" _upper)
    string(TOLOWER "${_component}-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}" _file)
    set(CPACK_ARCHIVE_${_upper}_FILE_NAME "${_file}")
endforeach()

include(CPack)
