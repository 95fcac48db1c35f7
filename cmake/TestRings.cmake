# SPDX-FileCopyrightText: EmulationManagement contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# Every test belongs to a ring, its CTest label: check, unit, qml, ide, robustness, e2e, fuzz, bench, soak or setup;
# what only ./dev check runs has the label analysis.
#
# add_ring_test(name RING ring SOURCES ... LIBRARIES ... [ISOLATED] [HELPERS] [TIMEOUT seconds]
#               [ENVIRONMENT NAME=value ...] [ARGUMENTS ...])
# A Qt Test program. ISOLATED gives it a network of its own (it uses fixed ports or starts servers). HELPERS says that
# it tests what only tests use.
#
# add_ring_command(name RING ring COMMAND ... [ISOLATED] [HELPERS] [TIMEOUT seconds] [ENVIRONMENT NAME=value ...]
#                  [COST seconds] [PLACES number])
# Any command; exit code 0 passes. COST is how long it takes, so that the longest start first. Twice as many programs run
# at a time as there are cores; PLACES is how many of them it counts for, one if it is not said. In the rings below it has to print its rows and totals as Qt Test does.
set(EMULATIONMANAGEMENT_RINGS_OF_ROWS unit qml ide robustness e2e setup)

set(EMULATIONMANAGEMENT_ISOLATED "${PROJECT_SOURCE_DIR}/tools/isolated")

# What a test passes to a script that starts the packaged IDE: that is not instrumented, so it has to load the sanitizer
# before anything else.
set(EMULATIONMANAGEMENT_PRELOAD_OPTION)
if(EMULATIONMANAGEMENT_SANITIZE)
    execute_process(
        COMMAND "${CMAKE_CXX_COMPILER}" -print-file-name=libasan.so
        OUTPUT_VARIABLE _asan OUTPUT_STRIP_TRAILING_WHITESPACE
        COMMAND_ERROR_IS_FATAL ANY
    )
    set(EMULATIONMANAGEMENT_PRELOAD_OPTION --preload "${_asan}")
endif()

function(add_ring_command name)
    cmake_parse_arguments(arg "ISOLATED;HELPERS" "COST;PLACES;RING;TIMEOUT" "COMMAND;ENVIRONMENT" ${ARGN})
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 300)
    endif()
    if(arg_ISOLATED)
        list(PREPEND arg_COMMAND "${EMULATIONMANAGEMENT_ISOLATED}")
    endif()
    add_test(NAME ${name} COMMAND ${arg_COMMAND})
    set(_environment QT_QPA_PLATFORM=offscreen QT_QUICK_BACKEND=software ${arg_ENVIRONMENT})
    if(EMULATIONMANAGEMENT_SANITIZE)
        # new_delete_type_mismatch: Qt and the IDE, compiled without sized deallocation, delete objects of our classes
        # by way of their bases.
        list(APPEND _environment
            "ASAN_OPTIONS=detect_leaks=1:abort_on_error=0:detect_stack_use_after_return=1:new_delete_type_mismatch=0"
            "UBSAN_OPTIONS=print_stacktrace=1"
            "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/sanitizer-suppressions.txt:print_suppressions=0"
        )
    endif()
    set(_labels ${arg_RING})
    if(arg_RING IN_LIST EMULATIONMANAGEMENT_RINGS_OF_ROWS)
        list(APPEND _labels rows)
    endif()
    if(arg_HELPERS)
        list(APPEND _labels helpers)
    endif()
    set_tests_properties(${name} PROPERTIES
        LABELS "${_labels}"
        TIMEOUT ${arg_TIMEOUT}
        ENVIRONMENT "${_environment}"
    )
    if(arg_COST)
        set_tests_properties(${name} PROPERTIES COST ${arg_COST})
    endif()
    if(arg_PLACES)
        set_tests_properties(${name} PROPERTIES PROCESSORS ${arg_PLACES})
    endif()
endfunction()

function(add_ring_test name)
    cmake_parse_arguments(arg "ISOLATED;HELPERS" "RING;TIMEOUT" "SOURCES;LIBRARIES;ENVIRONMENT;ARGUMENTS" ${ARGN})
    qt_add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE EmulationManagement::Options Qt6::Test ${arg_LIBRARIES})
    set(_options)
    if(arg_ISOLATED)
        list(APPEND _options ISOLATED)
    endif()
    if(arg_HELPERS)
        list(APPEND _options HELPERS)
    endif()
    if(arg_TIMEOUT)
        list(APPEND _options TIMEOUT ${arg_TIMEOUT})
    endif()
    add_ring_command(${name} RING ${arg_RING} COMMAND $<TARGET_FILE:${name}> ${arg_ARGUMENTS}
        ENVIRONMENT ${arg_ENVIRONMENT} ${_options})
endfunction()
