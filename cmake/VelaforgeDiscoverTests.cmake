# SPDX-License-Identifier: MIT
# Runs within ctest. Tells it the tests of one program: a test for each suite, or for each case.
#   program     its path
#   list        where its suites and cases are kept until the program changes
#   long_cases  whether each case is a test of its own
#   seconds     how long one case may take
#   threaded    the suites that have the label "threads"
#   properties  of its tests, as for set_tests_properties()
cmake_policy(VERSION 3.25)
get_filename_component(program_name "${program}" NAME)
if(NOT EXISTS "${program}")
    add_test("${program_name}_NOT_BUILT" "${program_name}_NOT_BUILT")
    set_tests_properties("${program_name}_NOT_BUILT" PROPERTIES ${properties})
    return()
endif()

if("${program}" IS_NEWER_THAN "${list}")
    execute_process(COMMAND "${program}" --gtest_list_tests OUTPUT_VARIABLE listed RESULT_VARIABLE status)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${program} cannot list its tests: ${status}")
    endif()
    file(WRITE "${list}" "${listed}")
endif()

# "Suite.  # comment" begins a suite, "  case  # comment" is a case of it. The comments may hold anything.
file(STRINGS "${list}" lines REGEX "^ *[A-Za-z0-9_/]+")
foreach(line IN LISTS lines)
    if(line MATCHES "^([A-Za-z0-9_/]+)\\.")
        set(suite "${CMAKE_MATCH_1}")
        set(name "${suite}")
    elseif(line MATCHES "^  ([A-Za-z0-9_/]+)")
        set(name "${suite}.${CMAKE_MATCH_1}")
    else()
        continue()
    endif()
    if((name STREQUAL suite AND long_cases) OR NOT (name STREQUAL suite OR long_cases))
        continue()
    endif()
    add_test("${name}" "${program}" --apart ${seconds} "${name}")
    set(labels "")
    if(suite IN_LIST threaded)
        set(labels LABELS threads)
    endif()
    # The program itself ends a case that takes too long, and goes on with the next one.
    set_tests_properties("${name}" PROPERTIES TIMEOUT 7200 ${labels} ${properties})
endforeach()
