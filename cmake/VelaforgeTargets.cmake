# SPDX-License-Identifier: MIT
# One function for each kind of target, so that a folder's CMakeLists.txt says only what is its own.

set(CMAKE_CXX_STANDARD 17 CACHE STRING "C++ standard of the build")
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# The build tree is laid out as the installed one, so that programs find what belongs to them by the same way.
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/${CMAKE_INSTALL_LIBDIR}")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")

find_program(VELAFORGE_CCACHE ccache)
if(VELAFORGE_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${VELAFORGE_CCACHE}")
endif()

# What all targets share: warnings, sanitizers, the include root.
add_library(velaforge_build_flags INTERFACE)
target_include_directories(velaforge_build_flags INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_options(velaforge_build_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow)
if(VELAFORGE_WARNINGS_AS_ERRORS)
    target_compile_options(velaforge_build_flags INTERFACE -Werror)
endif()
if(VELAFORGE_SANITIZE)
    target_compile_options(velaforge_build_flags INTERFACE
        "-fsanitize=${VELAFORGE_SANITIZE}" -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(velaforge_build_flags INTERFACE "-fsanitize=${VELAFORGE_SANITIZE}")
    if(VELAFORGE_SANITIZE MATCHES "address,undefined")
        # What uses such a pointer is stopped by the address sanitizer; to ask before as well takes a tenth of the compiler's
        # time.
        target_compile_options(velaforge_build_flags INTERFACE -fno-sanitize=null,object-size)
    endif()
    if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        # As g++ does by itself.
        if(VELAFORGE_SANITIZE MATCHES "address")
            target_compile_definitions(velaforge_build_flags INTERFACE __SANITIZE_ADDRESS__)
        elseif(VELAFORGE_SANITIZE MATCHES "thread")
            target_compile_definitions(velaforge_build_flags INTERFACE __SANITIZE_THREAD__)
        endif()
    endif()
endif()

# The program fuzz sees what its bytes make the libraries do.
option(VELAFORGE_FUZZ "Build the program that searches for bytes with which code ends badly" OFF)
if(VELAFORGE_FUZZ)
    target_compile_options(velaforge_build_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# What the tests run is counted. Assertions and optimised code would add branches that no source has.
option(VELAFORGE_COVERAGE "Count what is run" OFF)
if(VELAFORGE_COVERAGE)
    target_compile_options(velaforge_build_flags INTERFACE --coverage -fprofile-update=atomic)
    target_link_options(velaforge_build_flags INTERFACE --coverage
        -Wl,--wrap=_exit -Wl,--wrap=_Exit -Wl,--wrap=abort -Wl,-u,__wrap__exit)
    add_library(velaforge_coverage_at_exit STATIC "${PROJECT_SOURCE_DIR}/cmake/CoverageAtExit.cpp")
    target_link_libraries(velaforge_build_flags INTERFACE velaforge_coverage_at_exit)
endif()

# Headers that many sources read are read once. A source that forgets to include one of them compiles all the same, so the
# preset gcc does without; g++ gains nothing from it.
option(VELAFORGE_PRECOMPILE "Precompile headers of libraries" OFF)
option(VELAFORGE_PRECOMPILE_TESTS "Precompile headers of tests" ON)

# velaforge_precompile(<target> <header>...)
function(velaforge_precompile name)
    if(VELAFORGE_PRECOMPILE)
        target_precompile_headers(${name} PRIVATE ${ARGN})
    endif()
endfunction()

# velaforge_library(<name> [EXPORT <set>] [COMPONENT <component>] SOURCES <file>...
#                   [PUBLIC <target>...] [PRIVATE <target>...])
# A shared library with hidden visibility, which is installed; velaforge::<name> names it.
function(velaforge_library name)
    cmake_parse_arguments(ARG "" "EXPORT;COMPONENT" "SOURCES;PUBLIC;PRIVATE" EXPORT velaforgeTargets COMPONENT runtime
                          ${ARGN})
    add_library(${name} SHARED ${ARG_SOURCES})
    add_library(velaforge::${name} ALIAS ${name})
    string(TOUPPER ${name} upper)
    target_compile_definitions(${name} PRIVATE ${upper}_BUILD)
    target_compile_features(${name} PUBLIC cxx_std_17)
    target_include_directories(${name} PUBLIC
        "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>" "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")
    target_link_libraries(${name} PUBLIC ${ARG_PUBLIC} PRIVATE ${ARG_PRIVATE} velaforge_build_flags)
    # A library's calls of its own functions stay in it, so that the loader need not look them up at each start.
    target_link_options(${name} PRIVATE -Wl,--no-undefined -Wl,-Bsymbolic-functions)
    if(VELAFORGE_SANITIZE)
        target_link_options(${name} PRIVATE -Wl,--undefined-version -Wl,-z,undefs)
    endif()
    set_target_properties(${name} PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        BUILD_WITH_INSTALL_RPATH ON # the build tree is laid out as the installed one
        INSTALL_RPATH "$ORIGIN")
    install(TARGETS ${name} EXPORT ${ARG_EXPORT}
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT ${ARG_COMPONENT} NAMELINK_COMPONENT development)
endfunction()

# velaforge_program(<name> SOURCES <file>... LINK <target>...)
function(velaforge_program name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LINK} velaforge_build_flags)
endfunction()

# Tests share the precompiled headers of tests/support, and so these options. Qt asks for -fPIC where it is.
set(velaforge_test_options -O0 -fPIC)
if(VELAFORGE_CCACHE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    list(APPEND velaforge_test_options -fpch-preprocess) # or ccache keeps nothing of them
endif()

# velaforge_precompile_tests(<target> [<header>...])
# Has a library of test support precompile what tests include, and those headers, for itself and the tests that name it.
function(velaforge_precompile_tests name)
    target_compile_options(${name} PRIVATE ${velaforge_test_options})
    if(VELAFORGE_PRECOMPILE_TESTS)
        target_precompile_headers(${name} PRIVATE
            <filesystem> <functional> <gmock/gmock.h> <map> <memory> <string> <vector>
            <velaforge/application/Application.h> <velaforge/documents/DocManager.h> ${ARGN})
    endif()
endfunction()

set(VELAFORGE_CASE_SECONDS 300 CACHE STRING "Seconds until a test case that hangs is ended")

# velaforge_test(<name> [LONG_CASES] [PRECOMPILED_BY <target>] SOURCES <file>... [LINK <target>...]
#                [THREADED <suite>...] [PROPERTIES <ctest property> <value>...])
# One program of many test cases. What is tested is optimised, in libraries; the tests themselves take longer to optimise than
# to run.
#
# For ctest each suite is a test, which runs its cases one after another, each in a forked process of its own with a
# home directory of its own (tests/support/CasesApart.h), because singletons are never rebuilt. LONG_CASES makes each
# case a test, so that ctest runs the cases of one suite beside one another; these tests begin before the others.
#
# PRECOMPILED_BY names the target whose precompiled headers the tests share; velaforge_test_support by default.
#
# THREADED names the suites whose cases run on several threads: they have the label "threads", and the thread sanitizer's
# preset runs these alone. The target threaded_tests builds what they need.
function(velaforge_test name)
    cmake_parse_arguments(ARG "LONG_CASES" "PRECOMPILED_BY" "SOURCES;LINK;THREADED;PROPERTIES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LINK} velaforge_test_support velaforge_build_flags)
    target_compile_options(${name} PRIVATE ${velaforge_test_options})
    if(VELAFORGE_PRECOMPILE_TESTS)
        if(NOT ARG_PRECOMPILED_BY)
            set(ARG_PRECOMPILED_BY velaforge_test_support)
        endif()
        target_precompile_headers(${name} REUSE_FROM ${ARG_PRECOMPILED_BY})
    endif()
    if(ARG_THREADED)
        add_dependencies(threaded_tests ${name})
    endif()
    if(ARG_LONG_CASES)
        list(APPEND ARG_PROPERTIES COST 10)
    endif()
    set(discovery "${CMAKE_CURRENT_BINARY_DIR}/${name}")
    file(GENERATE OUTPUT "${discovery}_discover.cmake" CONTENT "# Made by CMake.
set(program [==[$<TARGET_FILE:${name}>]==])
set(list [==[${discovery}_cases.txt]==])
set(long_cases ${ARG_LONG_CASES})
set(seconds ${VELAFORGE_CASE_SECONDS})
set(threaded [==[${ARG_THREADED}]==])
set(properties [==[${ARG_PROPERTIES}]==])
include([==[${PROJECT_SOURCE_DIR}/cmake/VelaforgeDiscoverTests.cmake]==])
")
    set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES "${discovery}_discover.cmake")
endfunction()

# velaforge_benchmark(<name> SOURCES <file>... [LINK <target>...])
function(velaforge_benchmark name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_LINK} benchmark::benchmark velaforge_build_flags)
    # Where a short loop happens to lie in its cache lines must not decide a comparison.
    target_compile_options(${name} PRIVATE -falign-functions=64 -falign-loops=64)
endfunction()
