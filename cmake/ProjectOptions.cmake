# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# One interface target carries what every target of ours is compiled with: the language, warnings as errors, sanitizers.
# Every target links EmulationManagement::Options privately.

add_library(EmulationManagementOptions INTERFACE)
add_library(EmulationManagement::Options ALIAS EmulationManagementOptions)

target_compile_features(EmulationManagementOptions INTERFACE cxx_std_20)
target_compile_options(EmulationManagementOptions INTERFACE -Wall -Wextra -Wpedantic -Werror)
target_compile_definitions(EmulationManagementOptions INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_JAVA_STYLE_ITERATORS
    QT_DISABLE_DEPRECATED_UP_TO=0x060800
)

option(EMULATIONMANAGEMENT_SANITIZE "Compile with the Address- and UndefinedBehavior-sanitizer" OFF)
if(EMULATIONMANAGEMENT_SANITIZE)
    set(_sanitizers -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    # vptr checks need type information of the host's classes, which its libraries hide.
    list(APPEND _sanitizers -fno-sanitize=vptr)
    target_compile_options(EmulationManagementOptions INTERFACE ${_sanitizers})
    target_link_options(EmulationManagementOptions INTERFACE ${_sanitizers})
endif()

set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_CXX_EXTENSIONS OFF)
