# SPDX-License-Identifier: MIT
# Writes FILE, which makes one test of each suite in the test program PROGRAM. A suite is one process:
# a process for each test would cost more than the tests do.

execute_process(COMMAND ${PROGRAM} --gtest_list_tests
  OUTPUT_VARIABLE listed
  COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "\n[^ \n#]+\\." suites "\n${listed}")
set(tests "")
foreach(suite IN LISTS suites)
  string(REGEX REPLACE "[\n.]" "" suite "${suite}")
  string(APPEND tests "add_test([==[${NAME}.${suite}]==] [==[${PROGRAM}]==] [==[--gtest_filter=${suite}.*]==])\n"
    "set_tests_properties([==[${NAME}.${suite}]==] PROPERTIES ENVIRONMENT [==[${ENVIRONMENT}]==])\n")
endforeach()
file(WRITE ${FILE} "${tests}")
